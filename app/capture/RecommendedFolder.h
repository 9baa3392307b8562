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
    /// settings, so that being readable implies consent. Where any program of the user can read the
    /// folder, being readable does not imply consent.
    bool isGuardedBySystem = false;
    /// True when it stands for all folders that the system has for its purpose (`StandardRoots`),
    /// so that the user need not choose each. It is then read for this purpose only.
    bool representsFamily = false;

    /// The recommended folders of this system, in the order in which they are offered.
    static std::vector<RecommendedFolder>
    current(const std::filesystem::path& home = SystemFacts::homeDirectory());

    static std::vector<RecommendedFolder> ofMac(const std::filesystem::path& home);
    /// Finds the user's folders for downloads and documents under their localised names. The
    /// folders of applications, agents and daemons each stand for their family.
    static std::vector<RecommendedFolder>
    ofLinux(const std::filesystem::path& home,
            const UserFolders::Environment& environment = UserFolders::processEnvironment);

    bool operator==(const RecommendedFolder&) const = default;
};

} // namespace tidemark
