#include "core/capture/BackgroundCollector.h"

#include "core/base/JsonEncoder.h"
#include "tests/support/Contains.h"
#include "tests/support/ManualClock.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/PropertyLists.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tidemark;
using test::ManualClock;
using test::TemporaryFolder;
using test::xmlList;
using Kind = BackgroundItem::Kind;

namespace fs = std::filesystem;

namespace {

std::string definition(const std::string& label, const std::string& more = {}) {
    return xmlList("<dict><key>Label</key><string>" + label + "</string>" + more + "</dict>");
}

std::string program(const std::string& path) {
    return "<key>Program</key><string>" + path + "</string>";
}

Inventory<BackgroundItem> collected(const std::vector<BackgroundRoot>& roots,
                                    const std::vector<Shared<Application>>& apps = {}) {
    ManualClock clock;
    return BackgroundCollector::collect(roots, apps, clock);
}

std::vector<std::string> cannotRead(const fs::path& root) {
    return {"Background items: cannot completely read " + root.native()
            + ". Changes in this location are paused."};
}

Shared<Application> application(const std::string& identifier, const std::string& path) {
    return Shared(Application{identifier, "Name", "1", "1", path, {}});
}

} // namespace

TEST(BackgroundCollector, SkipsLinksEmptyListsAndDamagedFiles) {
    const TemporaryFolder folder;
    const auto good = folder.write("agents/b.plist", definition("com.example.b"));
    folder.write("agents/a.plist", test::binaryList("<dict><key>Label</key><string>com.example.a"
                                                    "</string></dict>"));
    for (const char* unseen : {".hidden.plist", "CAPITAL.PLIST", "plist", "a.plist.bak"})
        folder.write(std::string("agents/") + unseen, definition("unseen"));
    fs::create_symlink(good, folder / "agents/link.plist");
    fs::create_symlink("/nowhere", folder / "agents/dangling.plist");
    folder.write("agents/empty.plist", xmlList("<dict/>"));
    const std::string whole = definition("com.example.cut");
    folder.write("agents/cut.plist", whole.substr(0, whole.size() / 2));
    folder.write("agents/nothing.plist", "");
    folder.write("agents/array.plist", xmlList("<array/>"));
    folder.write("agents/unlabelled.plist", xmlList("<dict><key>A</key><true/></dict>"));
    folder.write("agents/no-text.plist",
                 xmlList("<dict><key>Label</key><integer>1</integer></dict>"));
    folder.write("agents/no-name.plist", definition(""));
    folder.write("agents/long-label.plist", definition(std::string(longestText + 1, 'x')));
    folder.write("agents/long-program.plist",
                 definition("a", program(std::string(longestText + 1, 'x'))));
    folder.makeFolder("agents/folder.plist");
    ::mkfifo((folder / "agents/pipe.plist").c_str(), 0600);
    fs::resize_file(folder.write("agents/sparse.plist", whole), std::uintmax_t{1} << 30);
    folder.write("daemons/c.plist", definition("com.example.c"));

    const auto inventory =
        collected({{folder / "daemons", Kind::daemon}, {folder / "agents/", Kind::agent}});

    ASSERT_EQ(inventory.items.size(), 3U);
    EXPECT_EQ(inventory.items[0]->identifier, "com.example.c");
    EXPECT_EQ(inventory.items[0]->kind, Kind::daemon);
    EXPECT_EQ(inventory.items[1]->identifier, "com.example.a");
    EXPECT_EQ(inventory.items[1]->kind, Kind::agent);
    EXPECT_EQ(inventory.items[2]->path, good.native());
    EXPECT_EQ(inventory.issues,
              std::vector<std::string>{
                  "Background items: 11 definitions could not be read or did not contain valid "
                  "metadata. They are excluded from comparisons."});
    EXPECT_EQ(inventory.notes,
              (std::vector<std::string>{
                  "Background items: 1 empty property lists were skipped because they contain no "
                  "service definition. No additional permission is needed for these files.",
                  "Background items: 2 symbolic links were skipped; their targets are not "
                  "followed."}));
    EXPECT_EQ(inventory.excludedPaths.size(), 14U);
    EXPECT_TRUE(inventory.excludedPaths.contains((folder / "agents/empty.plist").native()));
    EXPECT_EQ(inventory.roots.size(), 2U);
}

TEST(BackgroundCollector, TreatsAMissingRootAsEmptyAndOtherFailuresAsIncomplete) {
    const TemporaryFolder folder;
    folder.write("closed/a.plist", definition("a"));
    folder.write("open/secret.plist", definition("a"));
    fs::permissions(folder / "open/secret.plist", fs::perms::none);
    fs::permissions(folder / "closed", fs::perms::none);
    const test::OrdinaryUser user(folder.path());

    EXPECT_EQ(collected({{folder / "missing", Kind::agent}}).roots,
              std::set{(folder / "missing").native()});
    const auto closed = collected({{folder / "closed", Kind::agent}});
    EXPECT_EQ(closed.issues, cannotRead(folder / "closed"));
    EXPECT_TRUE(closed.roots.empty());
    const auto open = collected({{folder / "open", Kind::agent}});
    EXPECT_EQ(open.excludedPaths, std::set{(folder / "open/secret.plist").native()});
    EXPECT_EQ(open.roots.size(), 1U);
}

TEST(BackgroundCollector, StopsReadingARootAfterEightSecondsOrWhenStopped) {
    const TemporaryFolder folder;
    for (const char* name : {"1/a.plist", "1/b.plist", "1/c.plist", "2/a.plist"})
        folder.write(name, definition("x"));
    // The clock is read for the deadline, then before the listing and each definition.
    const auto found = [&](double secondsPerLook, const std::stop_token& stop = {}) {
        ManualClock clock(secondsPerLook);
        return BackgroundCollector::collect(
            {{folder / "1", Kind::agent}, {folder / "2", Kind::agent}}, {}, clock, stop);
    };
    EXPECT_EQ(found(2).roots.size(), 2U);
    const auto late = found(2.01);
    EXPECT_EQ(late.items.size(), 3U);
    EXPECT_EQ(late.roots, std::set{(folder / "2").native()});
    EXPECT_EQ(late.incompleteRoots, std::set{(folder / "1").native()});
    EXPECT_EQ(late.issues, cannotRead(folder / "1"));

    std::stop_source stop;
    stop.request_stop();
    const auto stopped = found(0, stop.get_token());
    EXPECT_TRUE(stopped.items.empty() && stopped.roots.empty());
}

TEST(BackgroundCollector, StopsReadingAFamilyAfterEightSeconds) {
    struct Case {
        RootFamily family;
        std::vector<const char*> files;
        /// How often the clock is read after the deadline was set: before the folder, before each
        /// entry in it and below it, and, for units, before each definition that is made of them.
        int looks;
    };
    const Case cases[] = {
        {RootFamily::userUnits, {"a.service", "a.service.d/b.conf", "c.wants/a.service"}, 7},
        {RootFamily::autostart, {"a.desktop", "b.desktop"}, 3},
    };
    for (const auto& [family, files, looks] : cases) {
        const TemporaryFolder folder;
        for (const char* file : files)
            folder.write(file, "[Service]\n[Desktop Entry]\n");
        const auto roots = [&](double seconds) {
            ManualClock clock(seconds / looks);
            return BackgroundCollector::collect({{folder.path(), Kind::agent, family}}, {}, clock)
                .roots.size();
        };
        EXPECT_EQ(roots(7.99), 1U) << looks;
        EXPECT_EQ(roots(8.01), 0U) << looks;
    }
}

TEST(BackgroundCollector, ReadsAFileWithManyNamesOnce) {
    const TemporaryFolder folder;
    const auto file = folder.write("a.plist", "first");
    fs::create_hard_link(file, folder / "b.plist");
    folder.write("c.plist", "other");
    static int reads;
    reads = 0;
    BackgroundFormat format{LaunchDefinition::recognises,
                            [](const FolderEntry& entry, const MergedFolders&) {
                                ++reads;
                                BackgroundItem item;
                                item.identifier = entry.read(100);
                                item.path = entry.pathText();
                                return BackgroundDefinition::Result(item);
                            },
                            /*isReadByContent=*/true};
    const auto found = [&] {
        ManualClock clock;
        std::string list;
        for (const auto& item : BackgroundCollector::collect({{folder.path(), Kind::agent}}, {},
                                                             clock, {}, {&format, 1})
                                    .items)
            list += fs::path(item->path).stem().native() + " " + item->identifier + ", ";
        return list;
    };
    EXPECT_EQ(found(), "a first, b first, c other, ");
    EXPECT_EQ(reads, 2);
    format.isReadByContent = false;
    EXPECT_EQ(found(), "a first, b first, c other, ");
    EXPECT_EQ(reads, 5);
}

TEST(BackgroundCollector, ReadsTheProgramOrTheFirstArgument) {
    const auto arguments = [](const std::string& elements) {
        return "<key>ProgramArguments</key><array>" + elements + "</array>";
    };
    const std::string two = "<string>/first</string><string>second</string>";
    const std::pair<std::string, std::optional<std::string>> cases[] = {
        {program("/program") + arguments(two), "/program"},
        {"<key>Program</key><true/>" + arguments(two), "/first"},
        {arguments(two + "<integer>3</integer>"), std::nullopt},
        {arguments(""), std::nullopt},
        {"<key>ProgramArguments</key><string>/text</string>", std::nullopt},
    };
    for (const auto& [more, expected] : cases) {
        const TemporaryFolder folder;
        folder.write("a.plist", definition("a", more));
        const auto inventory = collected({{folder.path(), Kind::agent}});
        EXPECT_EQ(inventory.items.at(0)->program, expected) << more;
    }
}

TEST(BackgroundCollector, AssociatesItemsByPlaceThenByName) {
    const auto app = application("com.example.app", "/Apps/A.app");
    const auto other = application("com.other", "/Apps/B.app");
    const auto nested = application("com.nested", "/Apps/A.app/Contents/N.app");
    const auto copy = application("com.example.app", "/Apps/Copy.app");
    const std::string inside = program("/Apps/A.app/Contents/MacOS/a");
    struct Case {
        std::string label;
        std::string program;
        std::vector<Shared<Application>> apps;
        std::optional<std::string> app, association;
    };
    const std::string byPlace = "Executable inside application bundle";
    const std::string byName = "Possible association based on bundle identifier";
    const Case cases[] = {
        {"com.other.worker", inside, {app, other}, "com.example.app", byPlace},
        {"com.example.app.worker", "", {app, other}, "com.example.app", byName},
        {"com.example.app", "", {app}, "com.example.app", byName},
        {"com.example.application", "", {app}, {}, {}},
        {"x", program("/Apps/A.app"), {app}, {}, {}},
        {"x", program("/Apps/A.application/a"), {app}, {}, {}},
        {"com.example.app.worker", "", {app, copy}, {}, {}},
        {"com.example.app.worker", inside, {app, copy}, "com.example.app", byPlace},
        {"x", program("/Apps/A.app/Contents/N.app/n"), {app, nested}, {}, {}},
        {"com.nested.x",
         program("/Apps/A.app/Contents/N.app/n"),
         {app, nested},
         "com.nested",
         byName},
        {"com.example.app.worker", inside, {app, app}, {}, {}},
    };
    for (const auto& each : cases) {
        const TemporaryFolder folder;
        folder.write("a.plist", definition(each.label, each.program));
        const auto inventory = collected({{folder.path(), Kind::agent}}, each.apps);
        EXPECT_EQ(inventory.items.at(0)->associatedAppID, each.app) << each.label << each.program;
        EXPECT_EQ(inventory.items.at(0)->association, each.association) << each.label;
    }
}

TEST(BackgroundCollector, StoresNoValueOfADefinition) {
    const TemporaryFolder folder;
    std::string more;
    for (const auto key : BackgroundDefinition::keys)
        if (key != "Program" && key != "ProgramArguments")
            more += "<key>" + std::string(key)
                    + "</key><dict><key>secret-key</key><array>"
                      "<string>secret-text</string><data>c2VjcmV0</data></array></dict>";
    folder.write("a.plist",
                 definition("a", more
                                     + "<key>Unknown</key><string>secret-unknown</string>"
                                       "<key>ProgramArguments</key><array><string>/bin/tool"
                                       "</string><string>secret-argument</string></array>"));
    const auto inventory = collected({{folder.path(), Kind::agent}});
    const std::string stored = json::encoded(inventory.items);
    EXPECT_FALSE(test::contains(stored, "secret"));
    EXPECT_FALSE(test::contains(stored, "c2VjcmV0"));
    EXPECT_EQ(inventory.items.at(0)->definitionFingerprints->size(),
              BackgroundDefinition::keys.size() - 1);
}
