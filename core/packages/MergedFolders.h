#pragma once

#include "core/base/MachineFiles.h"

#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// On most machines /bin, /lib and their like are links to the folders of that name in /usr, while
/// packages list files by either path (file-hierarchy(7)).
class MergedFolders {
public:
    explicit MergedFolders(const MachineFiles& machine);

    /// The path without links of a file that a list names.
    std::string canonical(std::string_view path) const;
    /// The paths by which a list may name a folder, itself first.
    std::vector<std::string> spellings(std::string_view folder) const;

private:
    /// "/lib", where that is a link to "/usr/lib".
    std::vector<std::string> links;
};

} // namespace tidemark
