#pragma once

#include "core/base/MachineFiles.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tidemark {

/// One path for each program of a machine. Where /bin is a link to /usr/bin, definitions use both
/// names for the same program, and releases move from one to the other without any meaning.
class ProgramPaths {
public:
    /// For a machine on which no folder of programs is a link.
    ProgramPaths() = default;
    /// By the links that the machine has among its folders of programs.
    static ProgramPaths of(const MachineFiles& machine);

    /// The path with a link among its first folders resolved; other texts are unchanged.
    std::string normalised(std::string_view program) const;

private:
    struct Link {
        std::string from;
        std::string to;
    };
    std::vector<Link> links;
};

} // namespace tidemark
