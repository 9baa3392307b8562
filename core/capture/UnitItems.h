#pragma once

#include "core/base/MachineFiles.h"
#include "core/base/MergedFolders.h"
#include "core/capture/FamilyDefinitions.h"
#include "core/capture/RootReading.h"

#include <filesystem>
#include <vector>

/// The units of one manager, the system's or a user's (systemd.unit(5)), as definitions.
namespace tidemark::UnitItems {

/// Reads `folders`, which are sorted from the most preferred. `readings` has a `RootReading` for
/// each folder, in the same order.
FamilyDefinitions read(const MachineFiles& machine,
                       const std::vector<std::filesystem::path>& folders,
                       std::vector<RootReading>& readings, const MergedFolders& merged);

} // namespace tidemark::UnitItems
