#include "app/capture/RecommendedFolder.h"

#include "core/capture/StandardRoots.h"

namespace tidemark {

using enum FolderPurpose;

std::vector<RecommendedFolder> RecommendedFolder::ofMac(const std::filesystem::path& home) {
    return {
        {"Applications", "/Applications", applications},
        {"Downloads", home / "Downloads", storage},
        {"Developer", home / "Library/Developer", storage},
        {"Trash", home / ".Trash", storage, true},
        {"Your background agents", home / "Library/LaunchAgents", launchAgents},
        {"System background agents", "/Library/LaunchAgents", launchAgents},
        {"System background daemons", "/Library/LaunchDaemons", launchDaemons},
    };
}

std::vector<RecommendedFolder>
RecommendedFolder::ofLinux(const std::filesystem::path& home,
                           const UserFolders::Environment& environment) {
    const UserFolders::Environment atHome = [&](const char* name) {
        return std::string_view(name) == "HOME" ? std::optional(home.native()) : environment(name);
    };
    const auto folder = [&](const char* kind, const char* usual) {
        return UserFolders::localized(kind, atHome).value_or(home / usual);
    };
    const StandardRoots::Places places{.home = home, .environment = atHome};
    return {
        {"Applications", StandardRoots::folderOfApplications(places), applications, false, true},
        {"Downloads", folder("DOWNLOAD", "Downloads"), storage},
        {"Documents", folder("DOCUMENTS", "Documents"), storage},
        {"Trash", UserFolders::data(atHome) / "Trash/files", storage},
        {"Optional software", "/opt", storage},
        {"Local software", "/usr/local", storage},
        {"Your background agents", StandardRoots::folderOfAgents(places), launchAgents, false,
         true},
        {"System background daemons", StandardRoots::folderOfDaemons(places), launchDaemons, false,
         true},
    };
}

} // namespace tidemark
