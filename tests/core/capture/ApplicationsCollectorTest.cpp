#include "core/capture/ApplicationsCollector.h"

#include "core/capture/RootReading.h"
#include "tests/support/ManualClock.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/PropertyLists.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tidemark;
using test::binaryList;
using test::ManualClock;
using test::TemporaryFolder;
using test::xmlList;

namespace fs = std::filesystem;

namespace {

std::string bundleElements(const std::string& identifier) {
    return "<dict><key>CFBundleIdentifier</key><string>" + identifier + "</string></dict>";
}

fs::path makeBundle(const TemporaryFolder& folder, const std::string& path,
                    const std::string& identifier = "com.example.app") {
    folder.write(path + "/Contents/Info.plist", xmlList(bundleElements(identifier)));
    return folder / path;
}

Inventory<Application> collected(const fs::path& root, const std::stop_token& stop = {}) {
    ManualClock clock;
    return ApplicationsCollector::collect({root}, clock, stop);
}

/// The paths of all items, relative to `folder`, joined by spaces.
std::string pathsBelow(const Inventory<Application>& inventory, const TemporaryFolder& folder) {
    std::string list;
    for (const auto& item : inventory.items)
        list += (list.empty() ? "" : " ") + item->path.substr(folder.path().native().size() + 1);
    return list;
}

std::vector<std::string> incomplete(const fs::path& root) {
    return {"Applications: incomplete access or scan limit at " + root.native()
            + ". Changes in this location are paused."};
}

std::vector<std::string> unreadable(int count) {
    return {"Applications: metadata could not be read for " + std::to_string(count)
            + " app or folder locations. These locations are excluded from comparisons."};
}

} // namespace

TEST(ApplicationsCollector, ReadsTheFieldsOfABundleInBothForms) {
    const TemporaryFolder folder;
    constexpr std::string_view full =
        R"(<dict><key>CFBundleIdentifier</key><string>com.example.full</string>
        <key>CFBundleDisplayName</key><string>Shown</string>
        <key>CFBundleName</key><string>Name</string>
        <key>CFBundleShortVersionString</key><string>1.2</string>
        <key>CFBundleVersion</key><string>34</string></dict>)";
    constexpr std::string_view oddTypes =
        R"(<dict><key>CFBundleIdentifier</key><string>com.example.odd</string>
        <key>CFBundleDisplayName</key><integer>1</integer>
        <key>CFBundleName</key><string>Name</string>
        <key>CFBundleShortVersionString</key><real>1.2</real>
        <key>CFBundleVersion</key><integer>34</integer></dict>)";
    folder.write("A.app/Contents/Info.plist", xmlList(full));
    folder.write("B.app/Contents/Info.plist", binaryList(oddTypes));
    makeBundle(folder, "C.d.APP", "com.example.bare");
    const timespec times[2] = {{0, 0}, {1'700'000'000, 123'456'000}};
    ::utimensat(AT_FDCWD, (folder / "A.app").c_str(), times, 0);

    const auto inventory = collected(folder.path());

    ASSERT_EQ(pathsBelow(inventory, folder), "A.app B.app C.d.APP");
    const auto& root = folder.path().native();
    const auto modified = inventory.items[0]->modified;
    EXPECT_EQ(*inventory.items[0],
              (Application{"com.example.full", "Shown", "1.2", "34", root + "/A.app", modified}));
    EXPECT_NEAR(modified.value().secondsSince1970(), 1'700'000'000.123456, 1e-6);
    EXPECT_EQ(inventory.items[1]->name, "Name");
    EXPECT_EQ(inventory.items[1]->version, "Unknown version");
    EXPECT_EQ(inventory.items[1]->build, "");
    EXPECT_EQ(inventory.items[2]->name, "C.d");
    EXPECT_EQ(inventory.roots, std::set<std::string>{root});
    EXPECT_TRUE(inventory.issues.empty() && inventory.notes.empty()
                && inventory.excludedPaths.empty());
}

TEST(ApplicationsCollector, WalksFourLevelsExceptBundlesAndHiddenFolders) {
    const TemporaryFolder folder;
    makeBundle(folder, "1/2/3/4/Deep.app");
    makeBundle(folder, "1/2/3/4/5/Deeper.app");
    makeBundle(folder, "Outer.app/Inner.app");
    makeBundle(folder, "Outer.app");
    makeBundle(folder, ".hidden/A.app");
    makeBundle(folder, ".B.app");
    folder.write("File.app", "no bundle");

    const auto inventory = collected(folder.path());

    EXPECT_EQ(pathsBelow(inventory, folder), "1/2/3/4/Deep.app Outer.app");
    EXPECT_EQ(inventory.excludedPaths, std::set{(folder / "1/2/3/4/5").native()});
    EXPECT_EQ(inventory.notes,
              std::vector<std::string>{
                  "Applications: 1 nested folders were beyond the four-level search limit. This is "
                  "a scan boundary, not a permission error; apps deeper inside those folders are "
                  "not tracked."});
    EXPECT_EQ(inventory.roots.size(), 1U);
}

TEST(ApplicationsCollector, FollowsOnlyTheLinkOfTheRoot) {
    const TemporaryFolder folder;
    makeBundle(folder, "real/A.app");
    makeBundle(folder, "elsewhere/B.app");
    fs::create_symlink(folder / "elsewhere/B.app", folder / "real/B.app");
    fs::create_symlink(folder / "elsewhere", folder / "real/folder");
    fs::create_symlink("/nowhere", folder / "real/dangling");
    fs::create_symlink(folder / "real", folder / "root");

    const auto inventory = collected(folder / "root/../root/");

    EXPECT_EQ(pathsBelow(inventory, folder), "real/A.app");
    EXPECT_EQ(inventory.roots, std::set{(folder / "real").native()});
    EXPECT_EQ(inventory.excludedPaths.size(), 3U);
    EXPECT_EQ(inventory.notes,
              std::vector<std::string>{"Applications: 3 symbolic links were skipped. Link targets "
                                       "are not followed outside the selected folder."});
}

TEST(ApplicationsCollector, CountsBundlesWithoutReadableMetadata) {
    const TemporaryFolder folder;
    const std::string good = xmlList(bundleElements("com.example"));
    const auto list = folder.write("elsewhere/Contents/Info.plist", good);
    folder.makeFolder("empty.app");
    folder.makeFolder("folder.app/Contents/Info.plist");
    folder.write("broken.app/Contents/Info.plist", good.substr(0, good.size() / 2));
    folder.write("array.app/Contents/Info.plist", xmlList("<array/>"));
    folder.write("number.app/Contents/Info.plist",
                 xmlList("<dict><key>CFBundleIdentifier</key><integer>1</integer></dict>"));
    folder.makeFolder("linked.app/Contents");
    fs::create_symlink(list, folder / "linked.app/Contents/Info.plist");
    folder.makeFolder("dangling.app/Contents");
    fs::create_symlink("/nowhere", folder / "dangling.app/Contents/Info.plist");
    folder.makeFolder("contents.app");
    fs::create_symlink(list.parent_path(), folder / "contents.app/Contents");
    folder.makeFolder("pipe.app/Contents");
    ::mkfifo((folder / "pipe.app/Contents/Info.plist").c_str(), 0600);
    const auto sparse = folder.write("sparse.app/Contents/Info.plist", good);
    fs::resize_file(sparse, std::uintmax_t{1} << 30);
    makeBundle(folder, "long.app", std::string(longestText + 1, 'x'));
    const int count = 11;

    const auto inventory = collected(folder.path());

    EXPECT_TRUE(inventory.items.empty());
    EXPECT_EQ(inventory.issues, unreadable(count));
    EXPECT_EQ(inventory.excludedPaths.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(inventory.roots.size(), 1U) << "the location itself was read";
}

TEST(ApplicationsCollector, ReadsTheOneApplicationInAWrapper) {
    const TemporaryFolder folder;
    const std::string good = xmlList(bundleElements("com.example.wrapped"));
    const auto one = folder.write("one.app/Wrapper/Inner.APP/Info.plist", good);
    folder.write("one.app/Wrapper/notes.txt", "");
    folder.makeFolder("one.app/Wrapper/Folder");
    fs::create_symlink(one.parent_path(), folder / "one.app/Wrapper/Link.app");
    folder.write("file.app/Wrapper/Inner.app/Info.plist", good);
    folder.write("file.app/Contents", "a file");
    folder.write("two.app/Wrapper/A.app/Info.plist", good);
    folder.write("two.app/Wrapper/B.app/Info.plist", good);
    folder.makeFolder("none.app/Wrapper");
    folder.makeFolder("link.app");
    fs::create_symlink(folder / "one.app/Wrapper", folder / "link.app/Wrapper");
    folder.makeFolder("list.app/Wrapper/Inner.app");
    fs::create_symlink(one, folder / "list.app/Wrapper/Inner.app/Info.plist");

    const auto inventory = collected(folder.path());

    EXPECT_EQ(pathsBelow(inventory, folder), "file.app one.app");
    EXPECT_EQ(inventory.issues, unreadable(4));

    // The clock is read for the deadline, then before the root, before the bundle and before the
    // entry of its folder "Wrapper".
    const TemporaryFolder single;
    single.write("one.app/Wrapper/Inner.app/Info.plist", good);
    for (const auto& [secondsPerLook, found] : {std::pair(2.66, "one.app"), std::pair(2.67, "")}) {
        ManualClock clock(secondsPerLook);
        EXPECT_EQ(pathsBelow(ApplicationsCollector::collect({single.path()}, clock), single),
                  found);
    }
}

TEST(ApplicationsCollector, TreatsAMissingRootAsEmptyAndOtherFailuresAsIncomplete) {
    const TemporaryFolder folder;
    folder.write("file", "");
    fs::create_symlink("/nowhere", folder / "dangling");
    makeBundle(folder, "closed/A.app");
    makeBundle(folder, "unsearchable/A.app");
    makeBundle(folder, "partly/A.app");
    folder.makeFolder("partly/closed");
    fs::permissions(folder / "closed", fs::perms::none);
    fs::permissions(folder / "unsearchable", fs::perms::others_read | fs::perms::owner_read);
    fs::permissions(folder / "partly/closed", fs::perms::none);
    const test::OrdinaryUser user(folder.path());

    const auto missing = collected(folder / "missing/below");
    EXPECT_EQ(missing.roots, std::set{(folder / "missing/below").native()});
    EXPECT_TRUE(missing.issues.empty());
    for (const char* name :
         {"file", "file/below", "dangling", "closed", "closed/below", "unsearchable", "partly"}) {
        const auto inventory = collected(folder / name);
        EXPECT_EQ(inventory.issues, incomplete(folder / name)) << name;
        EXPECT_TRUE(inventory.roots.empty()) << name;
    }
    EXPECT_EQ(pathsBelow(collected(folder / "partly"), folder), "partly/A.app");
}

TEST(ApplicationsCollector, StopsReadingARootAfterEightSecondsOrWhenStopped) {
    const TemporaryFolder folder;
    for (const char* name : {"1/A.app", "1/B.app", "1/C.app", "1/D.app", "2/A.app"})
        makeBundle(folder, name);
    // The clock is read for the deadline of a root, then before the root and each entry in it.
    const auto foundWith = [&](double secondsPerLook) {
        ManualClock clock(secondsPerLook);
        return ApplicationsCollector::collect({folder / "1", folder / "2"}, clock);
    };
    EXPECT_EQ(pathsBelow(foundWith(1.6), folder), "1/A.app 1/B.app 1/C.app 1/D.app 2/A.app");
    const auto late = foundWith(1.61);
    EXPECT_EQ(pathsBelow(late, folder), "1/A.app 1/B.app 1/C.app 2/A.app");
    EXPECT_EQ(late.issues, incomplete(folder / "1"));
    EXPECT_EQ(late.roots, std::set{(folder / "2").native()});

    std::stop_source stop;
    stop.request_stop();
    const auto stopped = collected(folder / "missing", stop.get_token());
    EXPECT_EQ(stopped.issues, incomplete(folder / "missing"));
}

TEST(ApplicationsCollector, MarksARootWithTooManyExclusionsAsIncomplete) {
    const TemporaryFolder folder;
    makeBundle(folder, "1/!.app");
    for (std::size_t i = 0; i <= RootReading::mostExcludedPaths; ++i)
        fs::create_symlink("/nowhere", folder / ("1/" + std::to_string(i)));
    const auto inventory = collected(folder / "1");
    EXPECT_EQ(inventory.issues, incomplete(folder / "1"));
    EXPECT_EQ(inventory.incompleteRoots, std::set{(folder / "1").native()});
    EXPECT_TRUE(inventory.excludedPaths.empty());
    EXPECT_EQ(pathsBelow(inventory, folder), "1/!.app");
    ManualClock clock(3);
    EXPECT_TRUE(ApplicationsCollector::collect({folder / "1"}, clock).items.empty())
        << "the listing took all the time";

    fs::remove(folder / "1/0");
    EXPECT_EQ(collected(folder / "1").excludedPaths.size(), RootReading::mostExcludedPaths);
}

TEST(ApplicationsCollector, ReadsAnyNameAndReportsOverlappingRootsTwice) {
    const TemporaryFolder folder;
    const std::string longest(251, 'x');
    for (const std::string& name : {std::string("a\nb"), std::string("\xFF\xFE"), longest})
        makeBundle(folder, "inner/" + name + ".app");

    ManualClock clock;
    const auto inventory = ApplicationsCollector::collect({folder / "inner", folder.path()}, clock);

    const std::string twice[] = {"a\nb", longest,
                                 "\uFFFD"
                                 "FF\uFFFD"
                                 "FE"};
    ASSERT_EQ(inventory.items.size(), 6U);
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(inventory.items[i]->name, twice[i / 2]);
        EXPECT_EQ(inventory.items[i]->path,
                  (folder / "inner").native() + "/" + twice[i / 2] + ".app");
    }
    EXPECT_TRUE(inventory.issues.empty());
}
