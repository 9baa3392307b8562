#pragma once

#include "core/base/MachineFiles.h"

#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// The folders of a machine that are links into /usr: on most machines /bin, /lib and their like,
/// on some /usr/sbin (file-hierarchy(7)). Packages list files by either path, definitions name
/// programs by either, and releases move from one to the other without any meaning.
class MergedFolders {
public:
    /// For a machine without such links.
    MergedFolders() = default;
    explicit MergedFolders(const MachineFiles& machine);

    /// A path with its first folders as they are without links; other texts stay as they are.
    std::string canonical(std::string_view path) const;
    /// The paths by which a list may name a folder, itself first.
    std::vector<std::string> spellings(std::string_view folder) const;

private:
    struct Link {
        std::string from;
        std::string to;
    };
    std::vector<Link> links;
};

} // namespace tidemark
