#include "core/system/UserFolders.h"

#include "tests/support/TemporaryFolder.h"

#include <map>

#include <gtest/gtest.h>

using namespace tidemark;
using test::TemporaryFolder;

namespace {

UserFolders::Environment variables(std::map<std::string, std::string> values) {
    return [values = std::move(values)](const char* name) {
        const auto found = values.find(name);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    };
}

void setMode(const std::filesystem::path& folder, unsigned mode) {
    std::filesystem::permissions(folder, std::filesystem::perms(mode));
}

} // namespace

#ifndef __APPLE__
TEST(UserFolders, FollowTheVariablesThatAreAbsolutePaths) {
    const std::tuple<std::map<std::string, std::string>, std::string, std::string> cases[] = {
        {{{"HOME", "/h"}}, "/h/.local/share", "/h/.config"},
        {{{"HOME", "/h"}, {"XDG_DATA_HOME", "/d"}, {"XDG_CONFIG_HOME", "/c"}}, "/d", "/c"},
        {{{"HOME", "/h"}, {"XDG_DATA_HOME", "d"}, {"XDG_CONFIG_HOME", ""}},
         "/h/.local/share",
         "/h/.config"},
    };
    for (const auto& [given, data, configuration] : cases) {
        EXPECT_EQ(UserFolders::data(variables(given)), data);
        EXPECT_EQ(UserFolders::configuration(variables(given)), configuration);
    }
    EXPECT_TRUE(UserFolders::data(variables({{"HOME", "relative"}})).is_absolute());
}
#endif

TEST(UserFolders, ReadsLocalisedFolders) {
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {"XDG_DOWNLOAD_DIR=\"$HOME/Téléchargements\"", "/h/Téléchargements"},
        {"# XDG_DOWNLOAD_DIR=\"/no\"\n\t XDG_DOWNLOAD_DIR = \"/a b/\" # yes\r", "/a b"},
        {"XDG_DOWNLOAD_DIR=\"/first\"\nXDG_DOWNLOAD_DIR=\"/last\"", "/last"},
        {R"(XDG_DOWNLOAD_DIR="$HOME/a\"b\\c\$d")", "/h/a\"b\\c$d"},
        {"XDG_DOWNLOAD_DIR=\"$HOME\"", std::nullopt},
        {"XDG_DOWNLOAD_DIR=\"$HOME/\"", std::nullopt},
        {"XDG_DOWNLOAD_DIR=\"/h/./\"", std::nullopt},
        {"XDG_DOWNLOAD_DIR=\"$HOMES/a\"", std::nullopt},
        {"XDG_DOWNLOAD_DIR=\"relative\"", std::nullopt},
        {"XDG_DOWNLOAD_DIR=\"/open\nXDG_DOWNLOAD_DIRS=\"/x\"\nXDG_DOWNLOAD_DIR\n=\n", std::nullopt},
        {"XDG_DOWNLOAD_DIR=\"\\", std::nullopt},
        {"XDG_DOWNLOAD_DIR=\"\"", std::nullopt},
        {"XDG_DESKTOP_DIR=\"/desk\"", std::nullopt},
        {"", std::nullopt},
    };
    const TemporaryFolder folder;
    const auto environment =
        variables({{"HOME", "/h"}, {"XDG_CONFIG_HOME", folder.path().native()}});
    EXPECT_EQ(UserFolders::localized("DOWNLOAD", environment), std::nullopt);
    for (const auto& [lines, found] : cases) {
        folder.write("user-dirs.dirs", lines);
        EXPECT_EQ(UserFolders::localized("DOWNLOAD", environment), found) << lines;
    }
}

TEST(UserFolders, UsesTheFirstPrivateRuntimeFolder) {
    const TemporaryFolder folder;
    const std::string user = std::to_string(::geteuid());
    const auto given = folder.makeFolder("given");
    const auto session = folder.makeFolder("sessions/" + user);
    const auto environment = variables({{"XDG_RUNTIME_DIR", given.native()}});
    const auto found = [&] { return UserFolders::runtime(environment, folder / "sessions"); };

    setMode(given, 0700);
    setMode(session, 0700);
    EXPECT_EQ(found(), given);
    setMode(given, 0750);
    EXPECT_EQ(found(), session);
    std::filesystem::remove(session);
    std::filesystem::create_symlink(given, session);
    EXPECT_EQ(found(), std::nullopt) << "a link may lead to another user's folder";
}
