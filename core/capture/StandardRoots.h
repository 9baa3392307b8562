#pragma once

#include "core/base/MachineFiles.h"
#include "core/capture/InventoryRoots.h"
#include "core/system/UserFolders.h"

#include <filesystem>
#include <vector>

/// The standard folders for applications and for programs that start automatically. One source file
/// per system.
///
/// Within a family the folder that has precedence comes first. Folders are included even if they
/// don't exist, so that whatever appears in them later is reported as new. None of them is inside
/// another one, and none is emptied by a restart, which would be reported as removals.
namespace tidemark::StandardRoots {

/// What the folders depend on: the machine, the home folder, and the environment variables that
/// move or add folders. The variables are used only for the machine that the program runs on,
/// because the environment of this process does not apply to another one.
struct Places {
    MachineFiles machine{};
    std::filesystem::path home;
    UserFolders::Environment environment = UserFolders::processEnvironment;

    /// The places of the user that the process runs as.
    static Places current(const MachineFiles& machine = {});
};

std::vector<ApplicationRoot> applications(const Places& places);
std::vector<BackgroundRoot> agents(const Places& places);
std::vector<BackgroundRoot> daemons(const Places& places);

/// A root at `folder`. Its family is that of the standard root at this path; if there is none, the
/// one that the end of the path indicates; else `RootFamily::any`.
ApplicationRoot applicationRoot(const std::filesystem::path& folder, const Places& places);
BackgroundRoot backgroundRoot(const std::filesystem::path& folder, BackgroundItem::Kind kind,
                              const Places& places);

/// The roots that a capture reads when the user granted `folder`: all standard roots of that
/// purpose if `folder` represents them (see `folderOfApplications`), otherwise only the folder
/// itself.
std::vector<ApplicationRoot> applicationsFor(const std::filesystem::path& folder,
                                             const Places& places);
std::vector<BackgroundRoot> backgroundFor(const std::filesystem::path& folder,
                                          BackgroundItem::Kind kind, const Places& places);

/// The folder that represents all standard roots of a purpose: who grants it, grants all of them.
/// Empty on systems where the user grants each folder separately. For agents, the user's folder of
/// start-up entries and the system's both represent all; this returns the user's or, if that does
/// not exist, the system's.
std::filesystem::path folderOfApplications(const Places& places);
std::filesystem::path folderOfAgents(const Places& places);
std::filesystem::path folderOfDaemons(const Places& places);

/// True when `folder` represents all standard roots of a purpose.
bool representsApplications(const std::filesystem::path& folder, const Places& places);
bool representsBackground(const std::filesystem::path& folder, BackgroundItem::Kind kind,
                          const Places& places);

} // namespace tidemark::StandardRoots
