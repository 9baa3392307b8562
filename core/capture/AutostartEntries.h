#pragma once

#include "core/base/MachineFiles.h"
#include "core/base/MergedFolders.h"
#include "core/capture/FamilyDefinitions.h"
#include "core/capture/RootReading.h"

#include <filesystem>
#include <vector>

/// Programs that a desktop session starts: files "….desktop" in the folders that the XDG
/// has for autostart.
namespace tidemark::AutostartEntries {

/// Reads the folders, the most preferred first, each with its reading. A file that disables what
/// has its name in a less preferred folder is the state of that, and no definition of its own; one
/// that replaces it is one of its own. An entry counts as defined for whichever desktops it is
/// meant, and also when its program is missing.
FamilyDefinitions read(const MachineFiles& machine,
                       const std::vector<std::filesystem::path>& folders,
                       std::vector<RootReading>& readings, const MergedFolders& merged);

} // namespace tidemark::AutostartEntries
