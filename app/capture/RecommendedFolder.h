#pragma once

#include "app/capture/FolderGrant.h"
#include "core/system/SystemFacts.h"
#include "core/system/UserFolders.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tidemark {

/// A folder that is worth observing on most machines.
struct RecommendedFolder {
    std::string title;
    std::filesystem::path url;
    /// Besides those that its name suggests.
    FolderPurpose purpose = FolderPurpose::storage;
    /// The system lets the program read it only once the user has allowed that in the system's own
    /// settings: to find it readable is to know that the user wants it read. Where any program of
    /// the user may read it, being readable says nothing about consent.
    bool isGuardedBySystem = false;
    /// It is read for its purpose only, and with it all folders that the system has for that
    /// purpose (`StandardRoots`), which need not be chosen one by one.
    bool standsForFamily = false;

    /// Those of this system, in the order in which they are offered.
    static std::vector<RecommendedFolder>
    current(const std::filesystem::path& home = SystemFacts::homeDirectory());

    static std::vector<RecommendedFolder> ofMac(const std::filesystem::path& home);
    /// By the folders that the desktop keeps for the user, under whatever names, and those that
    /// stand for applications and for what starts by itself.
    static std::vector<RecommendedFolder>
    ofLinux(const std::filesystem::path& home,
            const UserFolders::Environment& environment = UserFolders::processEnvironment);

    bool operator==(const RecommendedFolder&) const = default;
};

} // namespace tidemark
