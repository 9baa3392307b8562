#include "app/capture/RecommendedFolder.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace tidemark;
using test::TemporaryFolder;

TEST(RecommendedFolder, ListsTheFoldersOfEachSystem) {
    const auto shown = [](const std::vector<RecommendedFolder>& folders) {
        std::string text;
        for (const auto& [title, url, purpose, isGuarded, family] : folders)
            text += title + " " + url.native() + " " + std::string(rawValue(purpose))
                    + (isGuarded ? " guarded" : "") + (family ? " family\n" : "\n");
        return text;
    };
    EXPECT_EQ(shown(RecommendedFolder::ofMac("/h")),
              "Applications /Applications applications\n"
              "Downloads /h/Downloads storage\n"
              "Developer /h/Library/Developer storage\n"
              "Trash /h/.Trash storage guarded\n"
              "Your background agents /h/Library/LaunchAgents launchAgents\n"
              "System background agents /Library/LaunchAgents launchAgents\n"
              "System background daemons /Library/LaunchDaemons launchDaemons\n");

    const TemporaryFolder folder;
    const auto home = folder.path().native();
    const auto environment = [](const char*) { return std::nullopt; };
    EXPECT_EQ(shown(RecommendedFolder::ofLinux(home, environment)),
              "Applications /usr/share/applications applications family\nDownloads " + home
                  + "/Downloads storage\nDocuments " + home + "/Documents storage\n" + "Trash "
                  + home
                  + "/.local/share/Trash/files storage\n"
                    "Optional software /opt storage\nLocal software /usr/local storage\n"
                    "Your background agents /etc/xdg/autostart launchAgents family\n"
                    "System background daemons /etc/systemd/system launchDaemons family\n");
    folder.makeFolder(".config/autostart");
    EXPECT_EQ(RecommendedFolder::ofLinux(home, environment)[6].url, home + "/.config/autostart");
    folder.write(".config/user-dirs.dirs",
                 "XDG_DOWNLOAD_DIR=\"$HOME/Téléchargements\"\nXDG_DOCUMENTS_DIR=\"/d\"\n");
    const auto folders = RecommendedFolder::ofLinux(home, environment);
    EXPECT_EQ(folders[1].url, home + "/Téléchargements");
    EXPECT_EQ(folders[2].url, "/d");
}
