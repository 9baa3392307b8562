#pragma once

#include "core/base/MachineFiles.h"
#include "core/base/MergedFolders.h"
#include "core/capture/FamilyDefinitions.h"
#include "core/capture/RootReading.h"

#include <filesystem>
#include <vector>

/// Programs that a desktop session starts: files "….desktop" in the XDG autostart folders.
namespace tidemark::AutostartEntries {

/// Reads the folders, the most preferred first, with a `RootReading` for each. Of several files
/// with one name, each is a definition, except a file that only disables those in less preferred
/// folders: it makes them disabled. When a file can't be read, those of its name in less preferred
/// folders count as unreadable as well. Entries for other desktops and entries whose program is
/// missing are definitions as well.
FamilyDefinitions read(const MachineFiles& machine,
                       const std::vector<std::filesystem::path>& folders,
                       std::vector<RootReading>& readings, const MergedFolders& merged);

} // namespace tidemark::AutostartEntries
