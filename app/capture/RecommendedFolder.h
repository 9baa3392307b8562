#pragma once

#include "app/capture/FolderGrant.h"
#include "core/system/SystemFacts.h"
#include "core/system/UserFolders.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tidemark {

/// A folder that is worth monitoring on most machines.
struct RecommendedFolder {
    std::string title;
    std::filesystem::path url;
    /// Its purpose in addition to those that its name suggests.
    FolderPurpose purpose = FolderPurpose::storage;
    /// True when the program can read the folder only after the user allowed it in the system's
    /// settings, so that being readable implies consent. When any program of the user can read the
    /// folder, it does not.
    bool isGuardedBySystem = false;
    /// It is read for its purpose only, and with it all folders that the system has for that
    /// purpose (`StandardRoots`), which need not be chosen one by one.
    bool representsFamily = false;

    /// The recommended folders of this system, in the order in which they are offered.
    static std::vector<RecommendedFolder>
    current(const std::filesystem::path& home = SystemFacts::homeDirectory());

    static std::vector<RecommendedFolder> ofMac(const std::filesystem::path& home);
    /// Uses the folders of the desktop under their localised names, and those that stand for
    /// applications and for what starts by itself.
    static std::vector<RecommendedFolder>
    ofLinux(const std::filesystem::path& home,
            const UserFolders::Environment& environment = UserFolders::processEnvironment);

    bool operator==(const RecommendedFolder&) const = default;
};

} // namespace tidemark
