#include "core/capture/SystemObserver.h"

#include "core/storage/ComponentStorageScanner.h"
#include "core/timeline/DiffEngine.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Observations.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/PropertyLists.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace tidemark;
using test::ManualClock;
using test::TemporaryFolder;
namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

namespace {

const std::string overallLimit = "The overall storage scan was paused or reached its time limit. "
                                 "No size comparison was made.";
const std::string awaitingRefresh =
    "Some child-folder sizes are awaiting refresh. The displayed total retains their earlier "
    "dated measurements.";
const std::string bundleNote =
    "Application storage records individual app bundles, not all files in Applications. "
    "Last-measured sizes may have different dates; unfinished bundles do not contribute a size.";
const std::string inventoryTiming = "Applications and Background Inventory";

std::string measuredChildren(const std::string& counts) {
    return counts
           + " child folders measured. Completed measurements are retained; unfinished work "
             "continues on later checks.";
}

struct Observer : testing::Test {
    TemporaryFolder folder;
    ManualClock clock;
    ComponentStorageScanner scanner{"", 1'000'000, clock};
    ObservationOptions options{std::vector<ApplicationRoot>{folder / "none"},
                               std::vector<BackgroundRoot>{}};
    std::stop_source stopping;
    Lines phases;
    std::function<void(const std::string&)> onPhase = [](const auto&) {};

    Snapshot capture(ComponentStorageScanner* with) {
        phases.clear();
        const auto listen = [this](const std::string& phase) {
            phases.push_back(phase);
            onPhase(phase);
        };
        return SystemObserver::captureProgressively(options, with, listen, clock,
                                                    stopping.get_token());
    }
    void measure(const Lines& names) {
        options.storageRoots.clear();
        for (const auto& name : names)
            options.storageRoots.push_back(folder.makeFolder(name));
    }
    void writeBundle(const std::string& path) const {
        folder.write(path + "/Contents/Info.plist",
                     test::xmlList("<dict><key>CFBundleIdentifier</key><string>org.example." + path
                                   + "</string></dict>"));
    }
    void writeAgent(const std::string& path) const {
        folder.write(path + ".plist",
                     test::xmlList("<dict><key>Label</key><string>org.example</string></dict>"));
    }
    void writeFiles(const std::string& in, int count) const {
        for (int i = 0; i < count; ++i)
            folder.write(in + "/" + std::to_string(i), "1");
    }
    /// The phases of a capture, with " +" for complete and " -" for incomplete ones.
    static Lines timings(const Snapshot& snapshot) {
        Lines lines;
        for (const auto& timing : snapshot.scanTimings.value())
            lines.push_back(timing.name + (timing.complete ? " +" : " -"));
        return lines;
    }
    Lines sizes(const Snapshot& snapshot) const {
        Lines lines;
        for (const auto& size : snapshot.folders)
            lines.push_back(fs::path(size->path).lexically_relative(folder.path()).native() + " "
                            + std::to_string(size->bytes));
        return lines;
    }
};

} // namespace

TEST_F(Observer, MeasuresRootsShortestFirstAndApplicationsLast) {
    writeBundle("Applications/One.app");
    writeBundle("programs/Two.app");
    folder.write("abc/deep/file", "12345");
    folder.write("ää/file", "123");
    folder.write(".Trash/.DS_Store", "1");
    options.applicationRoots = {folder / "programs"};
    measure({"abc/deep", "b1", "Applications", "abc", "a1", "programs", "ää", ".Trash"});
    onPhase = [&](const auto&) { clock.advance(1); };

    const Snapshot snapshot = capture(&scanner);
    EXPECT_EQ(phases,
              (Lines{"Scanning Applications and Background Items…", "Scanning b1…", "Scanning a1…",
                     "Scanning ää…", "Scanning abc…", "Scanning Trash…", "Scanning deep…",
                     "Scanning Application Bundles…", "Saving Observation…"}));
    EXPECT_EQ(timings(snapshot), (Lines{inventoryTiming + " +", "b1 +", "a1 +", "ää +", "abc +",
                                        ".Trash +", "deep +", "Application Bundle Sizes +"}));
    EXPECT_EQ(snapshot.scanTimings->at(0).seconds, 1);
    EXPECT_EQ(snapshot.captureDuration, 8);
    EXPECT_EQ(snapshot.timestamp, ManualClock::start + 8);
    EXPECT_EQ(snapshot.coverage.issues, Lines{});
    EXPECT_EQ(snapshot.coverage.notes, Lines{bundleNote});
    EXPECT_EQ(snapshot.coverage.excludedPaths, std::set<std::string>{});
    EXPECT_EQ(snapshot.applications->size(), 1U) << "from the inventory only";

    const auto bundle = [&](const std::string& path) {
        return path + " " + std::to_string(fs::file_size(folder / path / "Contents/Info.plist"));
    };
    EXPECT_EQ(sizes(snapshot), (Lines{"b1 0", "a1 0", "ää 3", "abc 5", ".Trash 0", "abc/deep 5",
                                      bundle("Applications/One.app"), bundle("programs/Two.app")}));
    ASSERT_EQ(snapshot.folderStorage->size(), 6U);
    EXPECT_EQ(snapshot.folderStorage->at(4).name, "Trash");
    EXPECT_EQ(snapshot.applicationStorage->measuredCount(), 2);
    EXPECT_FALSE(snapshot.operatingSystem || snapshot.additionalReports
                 || snapshot.expectedCaptureInterval);
    EXPECT_TRUE(snapshot.freeBytes && snapshot.volumeContext);
}

TEST_F(Observer, NamesTheTrashOfADesktop) {
    measure({".local/share/Trash/files"});
    const Snapshot snapshot = capture(&scanner);
    EXPECT_EQ(phases.at(1), "Scanning Trash…");
    EXPECT_EQ(timings(snapshot).at(1), "Trash +");
    EXPECT_EQ(snapshot.folderStorage->at(0).name, "Trash");
}

TEST_F(Observer, ExcludesANestedRootThatCouldNotBeRead) {
    writeBundle("outer/.inner/One.app");
    writeBundle("home/Two.app");
    writeAgent("outer/.inner/a");
    writeAgent("home/agents/b");
    options.applicationRoots = {folder / "outer", folder / "outer/.inner", folder / "home"};
    for (const char* root : {"outer", "outer/.inner", "home/agents"})
        options.backgroundRoots.push_back({folder / root, BackgroundItem::Kind::agent});
    folder.makeFolder("home/closed");
    const Snapshot before = SystemObserver::capture(options, clock);
    ASSERT_EQ(before.applications->size(), 2U);
    ASSERT_EQ(before.backgroundItems->size(), 2U);

    fs::remove(folder / "home/agents/b.plist");
    fs::permissions(folder / "outer/.inner", fs::perms::none);
    fs::permissions(folder / "home/closed", fs::perms::none);
    const test::OrdinaryUser user(folder.path());
    const Snapshot after = SystemObserver::capture(options, clock);
    EXPECT_EQ(after.coverage.excludedPaths, std::set{(folder / "outer/.inner").native()});
    EXPECT_EQ(test::summary(DiffEngine::compare(before, after)),
              "backgroundRemoved " + (folder / "home/agents/b.plist").native())
        << "an incomplete folder of applications does not exclude a folder of definitions in it";
}

TEST_F(Observer, WalksEachRootInOneGoWithoutAScanner) {
    writeBundle("Applications/One.app");
    folder.write("a/sub/file", "12345");
    folder.write("f", "1");
    measure({"a", "Applications"});
    options.storageRoots.push_back(folder / "f");
    const Snapshot snapshot = capture(nullptr);
    EXPECT_EQ(phases, (Lines{"Scanning Applications and Background Items…", "Scanning a…",
                             "Scanning f…", "Scanning Applications…", "Saving Observation…"}));
    EXPECT_EQ(timings(snapshot), (Lines{inventoryTiming + " +", "a +", "f -", "Applications +"}));
    EXPECT_EQ(snapshot.coverage.issues,
              Lines{"Storage · f: The folder could not be opened. It may be missing or access may "
                    "be unavailable. No size comparison was made."});
    ASSERT_EQ(snapshot.folders.size(), 2U);
    EXPECT_EQ(snapshot.folders[0]->breakdown, (std::map<std::string, std::int64_t>{{"sub", 5}}));
    EXPECT_FALSE(snapshot.folderStorage || snapshot.applicationStorage);
    EXPECT_EQ(snapshot.coverage.notes, Lines{});

    options.storageRoots.clear();
    EXPECT_EQ(timings(capture(&scanner)), Lines{inventoryTiming + " +"});
}

TEST_F(Observer, RecordsOnlyTheSumOfTooManyFiles) {
    const Lines note{"Storage · a: The folder has more than 10,000 files of its own. Their total "
                     "size is recorded, but not their names."};
    writeFiles("a", 10'000);
    measure({"a"});
    for (const bool tooMany : {false, true}) {
        if (tooMany)
            folder.write("a/one more", "1");
        for (ComponentStorageScanner* used : {&scanner, static_cast<decltype(&scanner)>(nullptr)}) {
            const Snapshot snapshot = capture(used);
            const FolderSize& size = *snapshot.folders.at(0);
            EXPECT_EQ(size.directFileSizes.has_value(), !tooMany);
            EXPECT_EQ(size.breakdown, (SizeByName{{"Files in folder", size.bytes}}));
            EXPECT_EQ(snapshot.coverage.notes, tooMany ? note : Lines{});
            EXPECT_EQ(snapshot.coverage.issues, Lines{});
        }
    }
}

TEST_F(Observer, MeasuresOnlySmallRootsInACaptureWithoutPhases) {
    folder.write("long/file", "123");
    writeFiles("a", 40);
    measure({"long", "a", "missing"});
    fs::remove(folder / "missing");
    const Snapshot whole = SystemObserver::capture(options, clock);
    EXPECT_EQ(sizes(whole), (Lines{"long 3", "a 40"}));
    EXPECT_FALSE(whole.scanTimings || whole.captureDuration || whole.folderStorage);

    clock.readingStep = 0.1;
    const Snapshot slow = SystemObserver::capture(options, clock);
    EXPECT_EQ(sizes(slow), Lines{"long 3"});
    EXPECT_EQ(slow.coverage.issues,
              (Lines{"Storage · a: The scan reached its time limit. Folder access may be valid; "
                     "the size measurement was not completed. No size comparison was made.",
                     "Storage · missing: Some entries could not be read. No size comparison was "
                     "made."}));
    EXPECT_NEAR(slow.timestamp - ManualClock::start, 4, 0.9) << "taken after the measuring";

    stopping.request_stop();
    const Snapshot stopped = SystemObserver::capture(options, clock, stopping.get_token());
    EXPECT_EQ(stopped.coverage.issues.at(1),
              "Storage · long: The scan was cancelled. No size comparison was made.");
}

TEST_F(Observer, SharesTheBudgetAmongRoots) {
    for (const char* name : {"a", "b", "c", "d", "e"})
        writeFiles(name, 100);
    measure({"a", "b", "c", "d", "e"});
    clock.readingStep = 0.5;
    const Snapshot snapshot = capture(nullptr);
    const std::string timeLimit =
        "The scan reached its time limit. Folder access may be valid; the size measurement was "
        "not completed. No size comparison was made.";
    EXPECT_EQ(snapshot.coverage.issues,
              (Lines{"Storage · a: " + timeLimit, "Storage · b: " + timeLimit,
                     "Storage · c: " + timeLimit, "Storage · d: " + overallLimit,
                     "Storage · e: " + overallLimit}));
    for (const int root : {1, 2})
        EXPECT_NEAR(snapshot.scanTimings->at(std::size_t(root)).seconds, 30, 4);
    EXPECT_LT(snapshot.scanTimings->at(3).seconds, 28) << "what is left of the 90 seconds";
    EXPECT_EQ(timings(snapshot),
              (Lines{inventoryTiming + " +", "a -", "b -", "c -", "d -", "e -"}));
}

TEST_F(Observer, ReportsUnmeasuredChildFoldersAndContinuesNextTime) {
    writeFiles("root/large", 100);
    folder.write("root/small/file", "123");
    measure({"root"});
    clock.readingStep = 0.5;
    const Snapshot first = capture(&scanner);
    EXPECT_EQ(first.coverage.issues, Lines{"Storage · root: " + measuredChildren("1 of 2")});
    EXPECT_EQ(first.folders.size(), 0U);
    EXPECT_EQ(first.folderStorage->at(0).children.knownBytes(), 3);
    EXPECT_EQ(timings(first), (Lines{inventoryTiming + " +", "root -"}));

    clock.readingStep = 0;
    EXPECT_EQ(sizes(capture(&scanner)), Lines{"root 103"});

    fs::permissions(folder / "root/small", fs::perms::none);
    const test::OrdinaryUser user(folder.path());
    const Snapshot third = capture(&scanner);
    EXPECT_EQ(sizes(third), Lines{"root 103"});
    EXPECT_EQ(third.coverage.issues, Lines{"Storage · root: " + awaitingRefresh});
}

TEST_F(Observer, MeasuresAnApplicationsFolderWithoutBundlesAsAFolder) {
    folder.write("data/Applications/file", "123");
    folder.write("programs/file", "12");
    writeBundle("Applications/One.app");
    options.applicationRoots = {folder / "programs"};
    measure({"data/Applications", "programs", "Applications", "gone/Applications"});
    fs::remove(folder / "gone/Applications");
    const Snapshot snapshot = capture(&scanner);
    EXPECT_EQ(sizes(snapshot),
              (Lines{"programs 2", "data/Applications 3",
                     "Applications/One.app "
                         + std::to_string(
                             fs::file_size(folder / "Applications/One.app/Contents/Info.plist"))}));
    EXPECT_EQ(timings(snapshot), (Lines{inventoryTiming + " +", "programs +", "Applications +",
                                        "Applications -", "Application Bundle Sizes +"}));
    EXPECT_EQ(snapshot.coverage.issues,
              Lines{"Storage · Applications: Some entries could not be read. Earlier sizes are "
                    "preserved; no partial total is compared."});
}

TEST_F(Observer, ReportsAFailedSaveOfMeasurements) {
    ComponentStorageScanner failing(folder.write("file", "1") / "records.json", 1'000'000, clock);
    folder.write("a/sub/file", "1");
    measure({"a"});
    const Snapshot snapshot = capture(&failing);
    ASSERT_EQ(snapshot.coverage.issues.size(), 1U);
    EXPECT_TRUE(snapshot.coverage.issues[0].starts_with(
        "Folder size history could not be saved. It will be retried on later checks. "))
        << snapshot.coverage.issues[0];
    EXPECT_EQ(sizes(snapshot), Lines{"a 1"});
}

TEST_F(Observer, ReportsKnownBundleSizesWhenNoTimeIsLeft) {
    writeBundle("Applications/One.app");
    measure({"Applications", "a"});
    capture(&scanner);
    writeBundle("Applications/Two.app");
    onPhase = [&](const std::string& phase) {
        if (phase == "Scanning a…")
            clock.advance(SystemObserver::storageBudget);
    };
    const Snapshot snapshot = capture(&scanner);
    EXPECT_EQ(snapshot.coverage.issues,
              (Lines{"Storage · a: " + overallLimit,
                     "Application storage: 1 of 2 app bundles have measurements matching their "
                     "observed metadata. Remaining measurements will be retried on later checks; "
                     "existing sizes are retained with their dates."}));
    EXPECT_EQ(timings(snapshot),
              (Lines{inventoryTiming + " +", "a -", "Application Bundle Sizes -"}));
    ASSERT_EQ(snapshot.folders.size(), 1U);
    EXPECT_EQ(snapshot.folders[0]->measuredAt, ManualClock::start);
    EXPECT_EQ(snapshot.applicationStorage->records.size(), 2U);
}

TEST_F(Observer, ContinuesWithoutSizesWhenTheirFileCannotBeRead) {
    const auto file = folder.write("records.json", "{ broken");
    ComponentStorageScanner failing(file, 1'000'000, clock);
    folder.write("f", "1");
    folder.write("a/file", "1");
    writeBundle("Applications/One.app");
    measure({"a", "Applications"});
    options.storageRoots.push_back(folder / "f");
    const Snapshot snapshot = capture(&failing);
    ASSERT_EQ(snapshot.coverage.issues.size(), 3U);
    const std::string preserved = " Earlier sizes are preserved; no partial total is compared.";
    EXPECT_EQ(snapshot.coverage.issues[0],
              "Storage · a: Could not completely read or save this folder." + preserved);
    EXPECT_EQ(snapshot.coverage.issues[1],
              "Storage · f: The folder could not be opened. It may be missing or access may be "
              "unavailable."
                  + preserved);
    EXPECT_TRUE(snapshot.coverage.issues[2].starts_with(
        "Application size history could not be read or saved. Existing data was preserved. "))
        << snapshot.coverage.issues[2];
    EXPECT_EQ(timings(snapshot),
              (Lines{inventoryTiming + " +", "a -", "f -", "Application Bundle Sizes -"}));
    EXPECT_FALSE(snapshot.folderStorage || snapshot.applicationStorage);
    EXPECT_EQ(snapshot.coverage.notes, Lines{});
    EXPECT_EQ(test::contents(file), "{ broken");
}

TEST_F(Observer, StopsInAnyPhase) {
    writeBundle("Applications/One.app");
    folder.write("a/sub/file", "1");
    folder.write("b/sub/file", "1");
    options.applicationRoots = {folder / "Applications"};
    measure({"a", "b", "Applications"});
    const std::string none = inventoryTiming + " -";
    const std::string all = inventoryTiming + " +";
    const std::string bundles = "Application Bundle Sizes -";
    const std::pair<std::string, Lines> cases[] = {
        {"Scanning Applications and Background Items…", {none, "a -", "b -", bundles}},
        {"Scanning a…", {all, "a -", "b -", bundles}},
        {"Scanning b…", {all, "a +", "b -", bundles}},
        {"Scanning Application Bundles…", {all, "a +", "b +", bundles}},
        {"Saving Observation…", {all, "a +", "b +", "Application Bundle Sizes +"}},
    };
    for (const auto& [at, expected] : cases) {
        stopping = {};
        onPhase = [&, at = at](const std::string& phase) {
            if (phase == at)
                stopping.request_stop();
        };
        const Snapshot snapshot = capture(&scanner);
        EXPECT_EQ(timings(snapshot), expected) << at;
        EXPECT_EQ(phases.back(), "Saving Observation…");
        EXPECT_EQ(phases.size(), 5U);
        EXPECT_EQ(snapshot.coverage.applicationRoots->size(), expected[0] == all ? 1U : 0U);
    }
}

TEST_F(Observer, ResumesAStoppedMeasurement) {
    writeFiles("root/large", 1500);
    folder.write("root/a/b/file", "1");
    measure({"root"});
    clock.onPause = [&] { stopping.request_stop(); };
    const Snapshot plain = capture(nullptr);
    EXPECT_EQ(plain.coverage.issues,
              Lines{"Storage · root: The scan was cancelled. No size comparison was made."});

    stopping = {};
    const Snapshot stopped = capture(&scanner);
    EXPECT_EQ(stopped.coverage.issues, Lines{"Storage · root: " + measuredChildren("1 of 2")});
    const auto nested = StorageMeasurementItem::directory(folder / "root/a/b", Date{1});
    EXPECT_EQ(scanner.collect({nested}, 9, 0).records.at(0)->visitedEntries, 1)
        << "walked again, since the sizes of the capture are no longer shared";

    stopping = {};
    clock.onPause = {};
    const Snapshot resumed = capture(&scanner);
    EXPECT_EQ(sizes(resumed), Lines{"root 1501"});
    EXPECT_LT(resumed.folderStorage->at(0).children.records.at(1)->visitedEntries, 1000);
}

TEST_F(Observer, EndsTheScannersCaptureBeforeSaving) {
    folder.write("root/a/b/file", "1");
    measure({"root"});
    // During a capture, a folder that was walked as part of another one is not walked again.
    const auto nested = StorageMeasurementItem::directory(folder / "root/a/b", Date{1});
    std::optional<std::int64_t> during;
    std::optional<std::int64_t> after;
    folder.makeFolder("root2");
    options.storageRoots.push_back(folder / "root2");
    onPhase = [&](const std::string& phase) {
        auto& visited = phase == "Scanning root2…" ? during : after;
        if (&visited == &during || phase == "Saving Observation…")
            visited = scanner.collect({nested}, 9, 0).records.at(0)->visitedEntries;
    };
    capture(&scanner);
    EXPECT_EQ(during, 0);
    EXPECT_EQ(after, 1);
}
