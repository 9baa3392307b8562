#include "core/capture/StandardRoots.h"

#include "core/base/Text.h"
#include "core/capture/BackgroundCollector.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>

#include <gtest/gtest.h>

using namespace tidemark;
using test::TemporaryFolder;
namespace fs = std::filesystem;
using Kind = BackgroundItem::Kind;

#ifndef __APPLE__

namespace {

StandardRoots::Places places(const fs::path& root,
                             const std::map<std::string, std::string>& variables) {
    return {.machine = root.empty() ? MachineFiles() : MachineFiles::below(root),
            .home = "/home/me",
            .environment = [variables](const char* name) -> std::optional<std::string> {
                const auto found = variables.find(name);
                return found == variables.end() ? std::nullopt : std::optional(found->second);
            }};
}

std::vector<std::string> pathsOf(const auto& roots) {
    std::vector<std::string> paths;
    for (const auto& root : roots)
        paths.push_back(root.path.native());
    return paths;
}

} // namespace

TEST(StandardRoots, NoneLiesInAnotherOrInAFolderThatIsEmptiedByARestart) {
    const auto here = places("", {{"XDG_DATA_DIRS", "/opt/share/:relative:/usr/share:"
                                                    "/var/lib/flatpak/exports/share"},
                                  {"XDG_CONFIG_DIRS", "/etc/xdg/plasma:/etc/xdg"},
                                  {"XDG_CONFIG_HOME", "not/absolute"}});
    auto all = pathsOf(StandardRoots::applications(here));
    EXPECT_EQ(std::ranges::count(all, "/opt/share/applications"), 1);
    EXPECT_EQ(std::ranges::count(all, "/usr/share/applications"), 1);
    for (const auto& more :
         {pathsOf(StandardRoots::agents(here)), pathsOf(StandardRoots::daemons(here))})
        all.insert(all.end(), more.begin(), more.end());
    EXPECT_EQ(std::ranges::count(all, "/home/me/.config/systemd/user"), 1);
    for (const auto& root : all) {
        EXPECT_TRUE(root.starts_with('/')) << root;
        EXPECT_FALSE(isBelow(root, "/run") || root.contains("flatpak/exports")) << root;
        EXPECT_TRUE(std::ranges::none_of(all, [&](const auto& each) {
            return isBelow(root, each);
        })) << root;
    }
    // The variables of this process don't apply to another machine.
    const TemporaryFolder other;
    EXPECT_EQ(pathsOf(StandardRoots::applications(
                  places(other.path(), {{"XDG_DATA_DIRS", "/opt/share"}}))),
              pathsOf(StandardRoots::applications(places("", {}))));
}

TEST(StandardRoots, EachFolderOfDefinitionsIsReadByAFormat) {
    using namespace BackgroundCollector;
    const auto here = places("", {});
    for (const auto& roots : {StandardRoots::agents(here), StandardRoots::daemons(here)})
        for (const auto& [path, kind, family] : roots)
            EXPECT_GT(std::ranges::count(formats, family, &BackgroundFormat::family)
                          + std::ranges::count(families, family, &BackgroundFamily::family),
                      0)
                << path;
}

TEST(StandardRoots, AFolderRepresentsAllOfItsPurposeOrOnlyItself) {
    const TemporaryFolder folder;
    folder.makeFolder("etc/systemd/system");
    folder.makeFolder("home/me/units");
    folder.makeFolder("home/me/.config/systemd");
    fs::create_symlink("/home/me/units", folder / "home/me/.config/systemd/user");
    fs::create_symlink("etc", folder / "also");
    const auto machine = places(folder.path(), {});
    EXPECT_EQ(StandardRoots::backgroundFor("/also/systemd/system", Kind::daemon, machine),
              StandardRoots::daemons(machine));
    EXPECT_EQ(StandardRoots::backgroundFor("/etc/xdg/autostart", Kind::agent, machine),
              StandardRoots::agents(machine));
    EXPECT_EQ(StandardRoots::folderOfAgents(machine), "/etc/xdg/autostart");
    folder.makeFolder("home/me/.config/autostart");
    EXPECT_EQ(StandardRoots::folderOfAgents(machine), "/home/me/.config/autostart");
    fs::rename(folder / "home/me/.config/autostart", folder / "home/me/started");
    fs::create_symlink("/home/me/started", folder / "home/me/.config/autostart");
    EXPECT_EQ(StandardRoots::folderOfAgents(machine), "/home/me/.config/autostart");

    const std::pair<const char*, RootFamily> alone[] = {
        {"/home/me/units", RootFamily::userUnits},
        {"/etc/xdg/autostart", RootFamily::autostart},
        {"/opt/autostarted", RootFamily::any},
    };
    for (const auto& [path, family] : alone)
        EXPECT_EQ(StandardRoots::backgroundFor(path, Kind::daemon, machine),
                  (std::vector{BackgroundRoot{path, Kind::daemon, family}}))
            << path;
    for (const auto& roots : {StandardRoots::agents(machine), StandardRoots::daemons(machine)})
        for (const auto& root : roots)
            EXPECT_EQ(
                StandardRoots::backgroundRoot("/backup" + root.path.native(), root.kind, machine)
                    .family,
                root.family)
                << root.path;
    EXPECT_EQ(StandardRoots::applicationRoot("/opt/Applications", machine).family,
              RootFamily::ownApplications);
}

#endif
