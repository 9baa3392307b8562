#include "core/timeline/DiffEngine.h"

#include "core/timeline/DefinitionComparison.h"
#include "core/timeline/MetadataComparison.h"
#include "core/timeline/StorageBreakdown.h"
#include "tests/support/Observations.h"
#include "tests/support/SharedRecords.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace tidemark;
using test::agent;
using test::application;
using test::folder;
using test::trash;

namespace {

using Texts = std::map<std::string, std::string>;

struct Case {
    const char* name;
    std::function<void(Snapshot& before, Snapshot& after)> arrange;
    const char* changes;
};

void expectChanges(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
        Snapshot before = test::snapshot(1);
        Snapshot after = test::snapshot(2);
        c.arrange(before, after);
        EXPECT_EQ(test::summary(DiffEngine::compare(before, after)), c.changes) << c.name;
    }
}

Case folders(const char* name, const FolderSize& was, const FolderSize& is, const char* changes) {
    return {name,
            [=](Snapshot& before, Snapshot& after) {
                before.folders = test::shared(was);
                after.folders = test::shared(is);
            },
            changes};
}

FolderSize rolling(FolderSize size) {
    size.rollingMeasurement = true;
    return size;
}

} // namespace

TEST(DiffEngine, ComparesApplications) {
    using Paths = std::set<std::string>;
    const Paths usual{"/Applications"};
    const auto with = [&](const std::vector<Application>& was, const std::vector<Application>& is) {
        return [=](Snapshot& before, Snapshot& after) {
            before.applications.emplace(test::shared(was));
            after.applications.emplace(test::shared(is));
        };
    };
    const auto reading = [](const Paths& was, const Paths& is, const auto& arrange) {
        return [=](Snapshot& before, Snapshot& after) {
            arrange(before, after);
            before.coverage.applicationRoots.emplace(Paths(was));
            after.coverage.applicationRoots.emplace(Paths(is));
        };
    };
    const auto excluding = [](const Paths& was, const Paths& is, const auto& arrange) {
        return [=](Snapshot& before, Snapshot& after) {
            arrange(before, after);
            before.coverage.excludedPaths.emplace(Paths(was));
            after.coverage.excludedPaths.emplace(Paths(is));
        };
    };
    const Application a = application("A");
    const Application b = application("B");
    Application stranger = a;
    stranger.bundleID = "org.example.Stranger";
    Application moved = a;
    moved.path = "/Applications/Folder/A.app";
    Application renamed = a;
    renamed.name = "Other";
    renamed.modified = Date{5};
    Application outside = a;
    outside.path = "/Applications";
    Application sibling = a;
    sibling.path = "/ApplicationsOld/A.app";
    const char* removed = "applicationRemoved /Applications/B.app";
    const char* installed = "applicationInstalled /Applications/A.app";
    expectChanges({
        {"nothing", with({a, b}, {b, a}), ""},
        {"in the order of the paths", with({b}, {application("C"), a}),
         "applicationInstalled /Applications/A.app\napplicationRemoved /Applications/B.app\n"
         "applicationInstalled /Applications/C.app"},
        {"version", with({a}, {application("A", "2")}), "applicationUpdated /Applications/A.app"},
        {"build", with({a}, {application("A", "1", "2")}),
         "applicationUpdated /Applications/A.app"},
        {"name and date are not compared", with({a}, {renamed}), ""},
        {"another bundle in place", with({a, b}, {stranger, application("B", "2")}),
         "applicationRemoved /Applications/A.app\napplicationInstalled /Applications/A.app\n"
         "applicationUpdated /Applications/B.app"},
        {"moved", with({a}, {moved}),
         "applicationRemoved /Applications/A.app\n"
         "applicationInstalled /Applications/Folder/A.app"},
        {"the first of two counts", with({a}, {a, application("A", "2")}), ""},
        {"the first of two earlier ones counts", with({a, application("A", "2")}, {a}), ""},
        {"not below a root", with({}, {outside, sibling}), ""},
        {"root became unreadable", reading(usual, {"/Other"}, with({a}, {})), ""},
        {"root became readable", reading({}, usual, with({}, {a})), ""},
        {"an inner root is monitored no longer",
         reading({"/Applications", "/Applications/Folder"}, usual, with({moved}, {})), ""},
        {"an inner root is monitored from now on",
         reading(usual, {"/Applications", "/Applications/Folder"}, with({b}, {moved})), removed},
        {"excluded before", excluding({"/Applications/A.app"}, {}, with({a, b}, {})), removed},
        {"excluded after, by a folder above",
         excluding({}, {"/Applications/Folder"}, with({moved}, {a})), installed},
        {"an exclusion is not a prefix of a name",
         excluding({}, {"/Applications/A"}, with({}, {a})), installed},
    });
}

TEST(DiffEngine, ComparesBackgroundItems) {
    const auto with = [](const std::function<void(BackgroundItem&, BackgroundItem&)>& differ) {
        return [=](Snapshot& before, Snapshot& after) {
            BackgroundItem was = agent("sync");
            BackgroundItem is = was;
            differ(was, is);
            before.backgroundItems.emplace(test::shared(was, agent("old")));
            after.backgroundItems.emplace(test::shared(agent("new"), is));
        };
    };
    const char* others = "backgroundAdded /Library/LaunchAgents/new.plist\n"
                         "backgroundRemoved /Library/LaunchAgents/old.plist";
    const char* all = "backgroundAdded /Library/LaunchAgents/new.plist\n"
                      "backgroundRemoved /Library/LaunchAgents/old.plist\n"
                      "backgroundChanged /Library/LaunchAgents/sync.plist";
    using Item = BackgroundItem;
    expectChanges({
        {"same", with([](Item&, Item&) {}), others},
        {"identifier", with([](Item&, Item& is) { is.identifier = "x"; }), all},
        {"program appeared", with([](Item&, Item& is) { is.program = ""; }), all},
        {"fingerprint", with([](Item& was, Item& is) {
             was.definitionFingerprints = Texts{{"a", "1"}};
             is.definitionFingerprints = Texts{{"a", "2"}};
         }),
         all},
        {"older record has none",
         with([](Item&, Item& is) { is.definitionFingerprints = Texts{{"a", "1"}}; }), others},
        {"what is not compared", with([](Item&, Item& is) {
             is.kind = Item::Kind::daemon;
             is.safeSettings = Texts{{"RunAtLoad", "Yes"}};
             is.associatedAppID = is.association = "x";
         }),
         others},
        {"root became unreadable",
         [](Snapshot& before, Snapshot& after) {
             before.backgroundItems.emplace(test::shared(agent("a")));
             after.coverage.backgroundRoots.emplace({});
         },
         ""},
    });
    Item was = agent("a");
    Item is = was;
    was.definitionFingerprints = Texts{{"gone", "1"}, {"same", "1"}, {"z", "1"}};
    is.definitionFingerprints = Texts{{"added", "1"}, {"same", "1"}, {"z", "2"}};
    EXPECT_EQ(DefinitionComparison::changedKeys(was, is),
              (std::vector<std::string>{"added", "gone", "z"}));
}

TEST(DiffEngine, ComparesFolders) {
    const char* changed = "folderSizeChanged /home/Movies";
    const char* trashChanged = "folderSizeChanged /home/.Trash";
    const char* emptied = "trashBecameEmpty /home/.Trash 3";
    const auto movies = [](std::int64_t bytes, std::map<std::string, std::int64_t> parts) {
        return folder("/home/Movies", bytes, std::move(parts));
    };
    expectChanges({
        folders("below", movies(0, {}), movies(999'999'999, {}), ""),
        folders("at the threshold", movies(1'000'000'000, {}), movies(0, {}), changed),
        folders("a child below", movies(5, {{"a", 0}}), movies(5, {{"a", 499'999'999}}), ""),
        folders("a child at it", movies(5, {{"a", 500'000'000}, {"b", 5}}), movies(5, {{"b", 5}}),
                changed),
        folders("own files are not a child", movies(5, {{"Files in folder", 0}}),
                movies(5, {{"Files in folder", 10'000'000'000}}), ""),
        folders("parts unknown", movies(5, {}), movies(5, {{"a", 500'000'000}}), ""),
        folders("another mode", rolling(movies(0, {})), movies(9'000'000'000, {}), ""),
        folders(
            "absent mode counts as complete", movies(0, {}),
            [&] {
                auto size = movies(1'000'000'000, {});
                size.rollingMeasurement = false;
                return size;
            }(),
            changed),
        folders("no counterpart", movies(0, {}), folder("/home/Music", 9'000'000'000), ""),
        folders("trash below", trash(99'999'999), trash(0), ""),
        folders("trash at it", trash(100'000'000), trash(0), trashChanged),
        folders(
            "trash has no children", trash(0),
            [] {
                auto size = trash(1);
                size.breakdown.emplace({{"a", 900'000'000}});
                return size;
            }(),
            ""),
        folders("emptied", trash(1, 3), trash(0, 0), trashChanged),
        folders("emptied in another mode", rolling(trash(1, 3)), trash(0, 0), emptied),
        folders("was empty", rolling(trash(1, 0)), trash(0, 0), ""),
        folders("count unknown", rolling(trash(1)), trash(0, 0), ""),
        folders("not emptied", rolling(trash(1, 3)), trash(0, 1), ""),
        {"first of two earlier ones, order of the later list",
         [&](Snapshot& before, Snapshot& after) {
             before.folders =
                 test::shared(folder("/a", 0), folder("/a", 2'000'000'000), folder("/b", 0));
             after.folders = test::shared(folder("/b", 2'000'000'000), folder("/a", 2'000'000'000));
         },
         "folderSizeChanged /b\nfolderSizeChanged /a"},
        folders("the ends of the type", movies(INT64_MIN, {{"a", INT64_MIN}}),
                movies(INT64_MAX, {{"a", INT64_MAX}}), changed),
    });
}

TEST(DiffEngine, ComparesReportsOfTheTrash) {
    const auto reports = [](std::optional<std::int64_t> was, std::optional<std::int64_t> is,
                            const std::vector<Shared<FolderSize>>& measured = {}) {
        return [=](Snapshot& before, Snapshot& after) {
            FolderStorageReport report;
            report.path = "/home/.Trash";
            report.itemCount = was;
            before.folderStorage = {report};
            before.folders = measured;
            report.itemCount = is;
            after.folderStorage = {report};
        };
    };
    const char* emptied = "trashBecameEmpty /home/.Trash 3";
    expectChanges({
        {"emptied", reports(3, 0), emptied},
        {"never counted", reports({}, 0), ""},
        {"was empty", reports(0, 0), ""},
        {"is not counted", reports(3, {}), ""},
        {"reported by its size", reports(3, 0, test::shared(trash(1), trash(1, 1))), ""},
        {"not reported by its size", reports(3, 0, test::shared(trash(1), trash(1, 0))), emptied},
        {"no report before",
         [&](Snapshot& before, Snapshot& after) {
             reports(3, 0)(before, after);
             before.folderStorage.reset();
         },
         ""},
    });
}

TEST(DiffEngine, ComparesFreeSpaceAndTheSystem) {
    const auto space = [](std::optional<std::int64_t> was, std::optional<std::int64_t> is,
                          const std::optional<std::string>& volume) {
        return [=](Snapshot& before, Snapshot& after) {
            before.freeBytes = was;
            after.freeBytes = is;
            before.volumeID = "V";
            after.volumeID = volume;
        };
    };
    const auto systems = [](const std::optional<std::string>& was,
                            const std::optional<std::string>& is) {
        return [=](Snapshot& before, Snapshot& after) {
            before.operatingSystem = {"14", was};
            after.operatingSystem = {"14", is};
        };
    };
    expectChanges({
        {"below", space(0, 4'999'999'999, "V"), ""},
        {"at it", space(0, 5'000'000'000, "V"), "freeDiskSpaceChanged 0 > 5000000000"},
        {"downward", space(5'000'000'000, 0, "V"), "freeDiskSpaceChanged 5000000000 > 0"},
        {"another volume", space(0, 9'000'000'000, "W"), ""},
        {"no volume", space(0, 9'000'000'000, {}), ""},
        {"unknown", space({}, 9'000'000'000, "V"), ""},
        {"build", systems("A", "B"), "operatingSystemChanged 14 (A) > 14 (B)"},
        {"an empty build is one", systems("A", ""), "operatingSystemChanged 14 (A) > 14 ()"},
        {"build learned", systems({}, "B"), ""},
        {"system learned", [](Snapshot&, Snapshot& after) { after.operatingSystem = {"15", {}}; },
         ""},
    });
}

TEST(DiffEngine, ComparesAdditionalReports) {
    constexpr auto brew = ObservedMetadata::Kind::homebrew;
    const std::vector<ObservedMetadata> was{test::metadata(brew, "/b", "1"),
                                            test::metadata(brew, "/c", "1")};
    const std::vector<ObservedMetadata> is{test::metadata(brew, "/c", "2"),
                                           test::metadata(brew, "/a", "1")};
    const auto reports = [](const std::optional<std::vector<MetadataReport>>& before,
                            const std::optional<std::vector<MetadataReport>>& after) {
        return test::summary(MetadataComparison::compare(before, after));
    };
    using List = std::vector<MetadataReport>;
    const char* changes = "metadataChanged none > 1\nmetadataChanged 1 > none\n"
                          "metadataChanged 1 > 2";
    EXPECT_EQ(reports(List{test::report("/s", was)}, List{test::report("/s", is)}), changes);
    EXPECT_EQ(reports(List{test::report("/s", {}, false), test::report("/s", was)},
                      List{test::report("/s", is)}),
              changes)
        << "the first complete report counts";
    EXPECT_EQ(reports(List{test::report("/s", was)}, List{test::report("/s", is, false)}), "");
    EXPECT_EQ(reports(List{test::report("/s", was, false)}, List{test::report("/s", is)}), "");
    EXPECT_EQ(reports(List{test::report("/t", was)}, List{test::report("/s", is)}), "");
    EXPECT_EQ(reports({}, List{test::report("/s", is)}), "");
    EXPECT_EQ(reports(List{test::report("/s", {was[0]})}, List{test::report("/s", {})}),
              "metadataChanged 1 > none");
}

TEST(DiffEngine, DistinguishesChangedContentsFromAChangedSize) {
    const auto isContents = [](std::int64_t total, const char* path) {
        return DiffEngine::isContentsChange(folder(path, 10, {{"a", 0}}),
                                            folder(path, 10 + total, {{"a", 500'000'000}}));
    };
    EXPECT_TRUE(isContents(0, "/a"));
    EXPECT_TRUE(isContents(999'999'999, "/a"));
    EXPECT_FALSE(isContents(1'000'000'000, "/a"));
    EXPECT_FALSE(isContents(0, "/a/.Trash"));
}

TEST(StorageBreakdown, SortsByChange) {
    const auto before = folder("/a", 100, {{"b", 10}, {"c", 10}, {"gone", 30}, {"same", 50}});
    const auto after = folder("/a", 130, {{"b", 20}, {"c", 0}, {"new", 60}, {"same", 50}});
    const std::vector<StorageContribution> ranked{
        {"new", 0, 60}, {"gone", 30, 0}, {"b", 10, 20}, {"c", 10, 0}};
    const StorageBreakdown all(before, after, INT64_MAX);
    EXPECT_TRUE(all.isAvailable);
    EXPECT_EQ(all.contributions, ranked);
    EXPECT_EQ(all.otherDelta, 0);
    const StorageBreakdown one(before, after, 1);
    EXPECT_EQ(one.contributions, std::vector(1, ranked[0]));
    EXPECT_EQ(one.otherDelta, -30);
    for (const std::int64_t limit : {std::int64_t{0}, std::int64_t{-5}, INT64_MIN}) {
        EXPECT_TRUE(StorageBreakdown(before, after, limit).contributions.empty());
        EXPECT_EQ(StorageBreakdown(before, after, limit).otherDelta, 30);
    }
    EXPECT_FALSE(StorageBreakdown(folder("/a", 1), after, 8).isAvailable);
    EXPECT_EQ(StorageBreakdown(folder("/a", 1), after, 8).otherDelta, 0);
    EXPECT_TRUE(StorageBreakdown(folder("/a", 0), after, 8).isAvailable);
}

namespace {

/// A random observation with few names and versions, so that two of them have much in common.
Snapshot drawnSnapshot(unsigned number) {
    Snapshot made = test::snapshot(number);
    const auto small = [] { return *rc::gen::inRange(0, 3); };
    for (const char* name : {"A", "B", "C", "D"}) {
        if (small() > 0) {
            Application app = application(name, std::to_string(small()));
            app.bundleID += std::to_string(small());
            test::add(made.applications, std::move(app));
        }
        if (small() > 0) {
            BackgroundItem item = agent(name);
            item.definitionFingerprints = Texts{{"key", std::to_string(small())}};
            test::add(made.backgroundItems, std::move(item));
        }
        FolderSize size = folder(std::string("/home/") + name, small() * 700'000'000LL);
        size.breakdown.emplace({{"x", small() * 300'000'000LL}, {name, size.bytes}});
        made.folders.emplace_back(std::move(size));
    }
    if (small() == 0)
        made.coverage.applicationRoots.emplace({});
    if (small() == 0)
        made.coverage.excludedPaths.emplace(
            {"/Applications/B.app", "/Library/LaunchAgents/C.plist"});
    made.folders.emplace_back(trash(small() * 60'000'000LL, small()));
    return made;
}

template <class Case>
std::multiset<std::string> pathsOf(const std::vector<Change>& changes) {
    std::multiset<std::string> paths;
    for (const Change& change : changes)
        if (const auto* found = std::get_if<Case>(&change))
            paths.insert(found->value->path);
    return paths;
}

} // namespace

RC_GTEST_PROP(DiffEngine, ReportsNothingForEqualObservations, ()) {
    const Snapshot snapshot = drawnSnapshot(1);
    // Copies the applications and background items, so that their equality does not follow from the
    // same address.
    Snapshot copy = snapshot;
    copy.applications = {};
    for (const auto& app : *snapshot.applications)
        test::add(copy.applications, Application(*app));
    copy.backgroundItems = {};
    for (const auto& item : *snapshot.backgroundItems)
        test::add(copy.backgroundItems, BackgroundItem(*item));
    RC_ASSERT(test::summary(DiffEngine::compare(snapshot, copy)).empty());
}

RC_GTEST_PROP(DiffEngine, MirrorsWhenSwapped, ()) {
    const Snapshot a = drawnSnapshot(1);
    const Snapshot b = drawnSnapshot(2);
    const auto there = DiffEngine::compare(a, b);
    const auto back = DiffEngine::compare(b, a);
    using namespace change;
    RC_ASSERT(pathsOf<ApplicationInstalled>(there) == pathsOf<ApplicationRemoved>(back));
    RC_ASSERT(pathsOf<ApplicationRemoved>(there) == pathsOf<ApplicationInstalled>(back));
    RC_ASSERT(pathsOf<BackgroundAdded>(there) == pathsOf<BackgroundRemoved>(back));
    RC_ASSERT(pathsOf<BackgroundRemoved>(there) == pathsOf<BackgroundAdded>(back));
}

RC_GTEST_PROP(DiffEngine, DoesNotDependOnTheOrderOfItsInput, (std::uint32_t seed)) {
    const Snapshot before = drawnSnapshot(1);
    const Snapshot after = drawnSnapshot(2);
    Snapshot shuffled = before;
    Snapshot later = after;
    std::mt19937 random(seed);
    for (Snapshot* snapshot : {&shuffled, &later}) {
        auto applications = *snapshot->applications;
        std::ranges::shuffle(applications, random);
        snapshot->applications.emplace(std::move(applications));
        auto items = *snapshot->backgroundItems;
        std::ranges::shuffle(items, random);
        snapshot->backgroundItems.emplace(std::move(items));
    }
    std::ranges::shuffle(shuffled.folders, random);
    RC_ASSERT(DiffEngine::compare(shuffled, later) == DiffEngine::compare(before, after));
}

RC_GTEST_PROP(StorageBreakdown, AddsUpToTheChange, ()) {
    const auto drawn = [] {
        std::map<std::string, std::int64_t> parts;
        for (const char* name : {"a", "b", "c", "d"})
            if (*rc::gen::arbitrary<bool>())
                parts[name] = *rc::gen::inRange<std::int64_t>(0, 1'000'000'000'000);
        return folder("/a", *rc::gen::inRange<std::int64_t>(0, 9'000'000'000'000), parts);
    };
    const FolderSize before = drawn();
    const FolderSize after = drawn();
    const StorageBreakdown breakdown(before, after, *rc::gen::inRange(-1, 6));
    RC_PRE(breakdown.isAvailable);
    RC_ASSERT(std::accumulate(breakdown.contributions.begin(), breakdown.contributions.end(),
                              breakdown.otherDelta,
                              [](std::int64_t sum, const auto& part) { return sum + part.delta(); })
              == after.bytes - before.bytes);
}
