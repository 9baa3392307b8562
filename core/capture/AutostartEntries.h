#pragma once

#include "core/base/MachineFiles.h"
#include "core/base/MergedFolders.h"
#include "core/capture/FamilyDefinitions.h"
#include "core/capture/RootReading.h"

#include <filesystem>
#include <vector>

/// Programs that a desktop session starts: files "….desktop" in the XDG autostart folders.
namespace tidemark::AutostartEntries {

/// Reads `folders`, which are sorted from the most preferred. `readings` has a `RootReading` for
/// each folder, in the same order. If several folders have a file of the same name, each file is a
/// definition. A file that only disables the others is none: instead, the definitions of that name
/// in less preferred folders are disabled. When a file can't be read, those of its name in less
/// preferred folders count as unreadable as well. Entries for other desktops and entries whose
/// program is missing are definitions as well.
FamilyDefinitions read(const MachineFiles& machine,
                       const std::vector<std::filesystem::path>& folders,
                       std::vector<RootReading>& readings, const MergedFolders& merged);

} // namespace tidemark::AutostartEntries
