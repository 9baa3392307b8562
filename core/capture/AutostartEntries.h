#pragma once

#include "core/base/MachineFiles.h"
#include "core/base/MergedFolders.h"
#include "core/capture/FamilyDefinitions.h"
#include "core/capture/RootReading.h"

#include <filesystem>
#include <vector>

/// Programs that a desktop session starts: files "….desktop" in the XDG autostart folders.
namespace tidemark::AutostartEntries {

/// Reads the folders, the most preferred first, with a `RootReading` for each. A file that only
/// disables the file of its name in a less preferred folder is not a definition of its own: it
/// makes that one disabled. A file that replaces it is a definition of its own. A file that can't
/// be read makes those of its name in less preferred folders unreadable as well. Entries for other
/// desktops and entries whose program is missing are definitions as well.
FamilyDefinitions read(const MachineFiles& machine,
                       const std::vector<std::filesystem::path>& folders,
                       std::vector<RootReading>& readings, const MergedFolders& merged);

} // namespace tidemark::AutostartEntries
