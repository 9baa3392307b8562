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

/// A folder as a root of the family that it is known to belong to, as a standard root or by the end
/// of its path; else of `RootFamily::any`.
ApplicationRoot applicationRoot(const std::filesystem::path& folder, const Places& places);
BackgroundRoot backgroundRoot(const std::filesystem::path& folder, BackgroundItem::Kind kind,
                              const Places& places);

/// What a capture reads where the user allowed `folder`: the folder alone; or all standard roots
/// of that purpose, when it is one that stands for them in a choice of folders.
std::vector<ApplicationRoot> applicationsFor(const std::filesystem::path& folder,
                                             const Places& places);
std::vector<BackgroundRoot> backgroundFor(const std::filesystem::path& folder,
                                          BackgroundItem::Kind kind, const Places& places);

/// The folders that stand for all applications, agents and daemons in a choice of folders; empty
/// where each folder stands for itself. For agents it is one of two, by which of them exists now:
/// many a user has no folder of start-up entries. Either stands for all.
std::filesystem::path folderOfApplications(const Places& places);
std::filesystem::path folderOfAgents(const Places& places);
std::filesystem::path folderOfDaemons(const Places& places);

/// Whether `folder` stands for all standard roots of a purpose.
bool standsForApplications(const std::filesystem::path& folder, const Places& places);
bool standsForBackground(const std::filesystem::path& folder, BackgroundItem::Kind kind,
                         const Places& places);

} // namespace tidemark::StandardRoots
