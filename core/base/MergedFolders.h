#pragma once

#include "core/base/MachineFiles.h"

#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// The folders of a machine that are links into /usr: on most machines /bin, /lib and their like,
/// on some /usr/sbin (file-hierarchy(7)). The same file therefore has two paths: packages list it
/// by either, definitions name it by either, and a new release may use the other one, which is no
/// change of the machine.
class MergedFolders {
public:
    /// For a machine without such links.
    MergedFolders() = default;
    explicit MergedFolders(const MachineFiles& machine);

    /// A path below such a link, with the link replaced by the folder that it leads to. Any other
    /// text stays as it is.
    std::string canonical(std::string_view path) const;
    /// The paths by which a package may list `folder`, a path without links. `folder` is the first.
    std::vector<std::string> spellings(std::string_view folder) const;

private:
    struct Link {
        std::string from;
        std::string to;
    };
    std::vector<Link> links;
};

} // namespace tidemark
