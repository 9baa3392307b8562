#pragma once

#include "core/base/MachineFiles.h"
#include "core/capture/InventoryRoots.h"
#include "core/system/UserFolders.h"

#include <filesystem>
#include <vector>

/// Where a system keeps applications and what starts by itself. One source file per system.
///
/// Within a family the folder that has precedence comes first. Folders are named whether they exist
/// or not, since what appears in a missing one is new. None of them lies in another, and none is
/// emptied by a restart, so that what goes with a restart is never reported as removed.
namespace tidemark::StandardRoots {

/// Whose folders: of `home`, and of the variables that move or add folders. The environment of this
/// process says nothing about a machine elsewhere, for which none is asked.
struct Places {
    MachineFiles machine{};
    std::filesystem::path home;
    UserFolders::Environment environment = UserFolders::processEnvironment;

    /// Those of the user that the process runs as.
    static Places current(const MachineFiles& machine = {});
};

std::vector<ApplicationRoot> applications(const Places& places);
std::vector<BackgroundRoot> agents(const Places& places);
std::vector<BackgroundRoot> daemons(const Places& places);

/// What is observed of `folder` when the user asks for it: the folder itself, as one of its family;
/// or all standard roots of that purpose, when `folder` is the one that stands for them in a choice
/// of folders. A folder that belongs to no family is `RootFamily::any`.
std::vector<ApplicationRoot> applicationsOf(const std::filesystem::path& folder,
                                            const Places& places);
std::vector<BackgroundRoot> backgroundOf(const std::filesystem::path& folder,
                                         BackgroundItem::Kind kind, const Places& places);

/// The folders that stand for all applications, agents and daemons in a choice of folders; empty
/// where each folder stands for itself.
std::filesystem::path folderOfApplications(const Places& places);
std::filesystem::path folderOfAgents(const Places& places);
std::filesystem::path folderOfDaemons(const Places& places);

} // namespace tidemark::StandardRoots
