#include "core/storage/ComponentStorageScanner.h"

#include "core/base/FileError.h"
#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ResourceLimit.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace tidemark;
using test::ManualClock;
using test::TemporaryFolder;
namespace fs = std::filesystem;
using Failure = StorageMeasurementFailure;
using Record = StorageMeasurementRecord;
using Sizes = std::map<std::string, std::int64_t>;

namespace {

constexpr double never = 1e9;

struct Scanner : testing::Test {
    TemporaryFolder folder;
    ManualClock clock;
    fs::path file = folder / "data/records.json";
    ComponentStorageScanner scanner{file, 1'000'000, clock};

    StorageMeasurementItem item(const std::string& name, double modified = 1) const {
        return StorageMeasurementItem::directory(folder / name, Date{modified});
    }
    Record collectOne(const StorageMeasurementItem& one, double refreshInterval = 0,
                      const ComponentStorageScanner::Measure& measure = {}) {
        return *scanner.collect({one}, 1000, refreshInterval, measure).records.at(0);
    }
    MeasurementRecords stored() const {
        return json::decode<MeasurementRecords>(test::contents(file));
    }
    static Record recordOf(const StorageMeasurementItem& one, Date attemptedAt) {
        Record record;
        record.item.emplace(StorageMeasurementItem(one));
        record.bytes = 1;
        record.attemptedAt = attemptedAt;
        return record;
    }
    static ComponentStorageScanner::Measurement sized(std::int64_t bytes) {
        FolderSize size;
        size.bytes = bytes;
        return size;
    }
    static ComponentStorageScanner::Measurement failed(Failure failure) {
        return std::unexpected(failure);
    }
};

} // namespace

TEST_F(Scanner, KeepsAMeasurementInAPrivateFileUntilItIsDueAgain) {
    folder.write("app/one", "12345");
    folder.write("app/sub/two", "123");
    const auto record = collectOne(item("app"));
    EXPECT_EQ(record.bytes, 8);
    EXPECT_EQ(record.breakdown, (Sizes{{"Files in folder", 5}, {"sub", 3}}));
    EXPECT_EQ(record.breakdownComplete, true);
    EXPECT_EQ(record.measuredItem, item("app"));
    EXPECT_EQ(record.measuredAt, ManualClock::start);
    EXPECT_EQ(record.visitedEntries, 3);
    EXPECT_EQ(*stored().at((folder / "app").native()), record);
    EXPECT_EQ(test::modeOf(file), 0600U);
    EXPECT_EQ(test::modeOf(file.parent_path()), 0700U);

    folder.write("app/three", "1");
    ComponentStorageScanner restarted(file, 1, clock);
    clock.advance(99);
    EXPECT_EQ(*restarted.collect({item("app")}, 10, 100).records.at(0), record);
    clock.advance(1);
    EXPECT_EQ(restarted.collect({item("app")}, 10, 100).records.at(0)->attemptedAt,
              ManualClock::start + 100);
}

TEST_F(Scanner, MeasuresAfterTheClockWasSetBackWithoutAnInterval) {
    folder.write("a/file", "1");
    collectOne(item("a"));
    folder.write("a/file", "12");
    clock.advance(-86'400);
    EXPECT_EQ(collectOne(item("a")).bytes, 2);
}

TEST_F(Scanner, PausesBetweenManySmallItems) {
    const auto original = folder.write("file", "1");
    std::vector<StorageMeasurementItem> items;
    for (const char* name : {"a", "b", "c", "d", "e"}) {
        folder.makeFolder(name);
        for (int link = 0; link < 500; ++link)
            fs::create_hard_link(original, folder / name / std::to_string(link));
        items.push_back(item(name));
    }
    EXPECT_EQ(scanner.collect(items, 9, 0).knownBytes(), 2500);
    EXPECT_EQ(clock.pauses, 2);

    const auto slow = [&](const fs::path&, double) {
        clock.advance(0.02);
        return sized(1);
    };
    scanner.collect(items, 9, 0, slow);
    EXPECT_EQ(clock.pauses, 4) << "after every two items";
}

TEST_F(Scanner, MeasuresItemsInTurn) {
    std::string order;
    const auto measure = [&](const fs::path& path, double) {
        order += path.filename().native();
        clock.advance(1);
        return failed(Failure::unreadable);
    };
    const auto collect = [&](const std::string& names, double seconds) {
        std::vector<StorageMeasurementItem> items;
        for (const char name : names)
            items.push_back(item(std::string(1, name)));
        order.clear();
        scanner.collect(items, seconds, 0, measure);
        return order;
    };
    EXPECT_EQ(collect("dcba", 3), "abc") << "items never attempted are in order of path";
    EXPECT_EQ(collect("abcd", 2), "da");
    EXPECT_EQ(collect("abcde", 9), "ebcda");
}

TEST_F(Scanner, GrowsSlicesWithFailuresAndKeepsAnEarlierSize) {
    std::vector<double> slices;
    const auto fail = [&](const fs::path&, double slice) {
        slices.push_back(slice);
        return failed(Failure::timeLimit);
    };
    const auto succeed = [&](const fs::path&, double slice) {
        slices.push_back(slice);
        return sized(7);
    };
    collectOne(item("a"), 0, succeed);
    auto record = collectOne(item("a"), never, fail);
    EXPECT_EQ(slices, (std::vector<double>{15}));

    for (const std::int64_t attempts : {1, 2, 3, 3, 3}) {
        record = collectOne(item("a"), 0, fail);
        EXPECT_EQ(record.attempts, attempts);
    }
    EXPECT_EQ(slices, (std::vector<double>{15, 15, 30, 60, 120, 120}));
    EXPECT_EQ(record.issue, rawValue(Failure::timeLimit));
    EXPECT_EQ(record.bytes, 7);
    EXPECT_FALSE(record.matchesObservedMetadata());

    scanner.collect({item("a")}, 50, 0, succeed);
    EXPECT_EQ(slices.back(), 50) << "not more than the remaining time";
    record = collectOne(item("a"), 0, succeed);
    EXPECT_EQ(slices.back(), 15);
    EXPECT_EQ(record.attempts, 0);
    EXPECT_FALSE(record.issue);
}

TEST_F(Scanner, KeepsTheOldSizeOfAChangedItemUntilMeasured) {
    collectOne(item("a"), 0, [](auto&, double) { return sized(7); });
    const auto changed = *scanner.collect({item("a", 2)}, 0, never).records.at(0);
    EXPECT_EQ(changed.bytes, 7);
    EXPECT_FALSE(changed.matchesObservedMetadata());
    EXPECT_EQ(changed.measuredItem, item("a", 1));

    auto other = item("a", 1);
    other.identifier = "app.other";
    Record fresh;
    fresh.item.emplace(StorageMeasurementItem(other));
    EXPECT_EQ(*scanner.collect({other}, 0, never).records.at(0), fresh);
}

TEST_F(Scanner, ContinuesAWalkUntilItsItemChanges) {
    for (const char* name : {"1", "2", "3", "4"})
        folder.write(std::string("ab/") + name, "12");
    ComponentStorageScanner small(file, 3, clock);
    const auto collect = [&](double modified) {
        return *small.collect({item("ab", modified)}, 1000, 0).records.at(0);
    };
    auto record = collect(1);
    EXPECT_EQ(record.issue, rawValue(Failure::paused));
    EXPECT_EQ(record.visitedEntries, 3);
    EXPECT_FALSE(record.bytes);
    record = collect(1);
    EXPECT_EQ(record.bytes, 8);
    EXPECT_EQ(record.visitedEntries, 1);

    collect(1);
    EXPECT_EQ(collect(2).issue, rawValue(Failure::paused)) << "started again";
    record = collect(3);
    EXPECT_EQ(record.bytes, 8) << "a folder that always changes is measured";
    EXPECT_EQ(record.measuredItem, item("ab", 2));
    EXPECT_FALSE(record.matchesObservedMetadata());

    collect(2);
    small.retainCursors({folder / "ab/"});
    EXPECT_FALSE(collect(2).issue) << "kept";
    collect(2);
    small.retainCursors({folder / "missing", folder / "ab/1", folder / "a"});
    EXPECT_EQ(collect(2).issue, rawValue(Failure::paused)) << "dropped";
}

TEST_F(Scanner, MeasuresATreeThatChangesBetweenCaptures) {
    const auto files = [&](int from, int to) {
        for (int name = from; name < to; ++name)
            folder.write("a/sub/" + std::to_string(name), "1");
    };
    files(0, 1000);
    ComponentStorageScanner small(file, 301, clock);
    auto record = *small.collect({item("a")}, 1000, 0).records.at(0);
    int collects = 1;
    for (; !record.bytes && collects < 10; ++collects) {
        EXPECT_EQ(record.issue, rawValue(Failure::paused));
        for (int name = collects * 100; name < (collects + 1) * 100; ++name)
            fs::remove(folder / "a/sub" / std::to_string(name));
        record = *small.collect({item("a")}, 1000, 0).records.at(0);
    }
    EXPECT_EQ(collects, 4);
    EXPECT_GE(record.bytes, 700);
    EXPECT_LE(record.bytes, 1000);
}

TEST_F(Scanner, KeepsNothingOpenForUnfinishedWalks) {
    constexpr int children = 520;
    std::vector<StorageMeasurementItem> items;
    for (int name = 0; name < children; ++name) {
        folder.write("root/" + std::to_string(name) + "/sub/file", "1");
        items.push_back(item("root/" + std::to_string(name)));
    }
    const auto openDescriptors = [] {
        return std::distance(fs::directory_iterator("/proc/self/fd"), {});
    };
    const test::ResourceLimit few(RLIMIT_NOFILE, 64);
    const auto atRest = openDescriptors();
    ComponentStorageScanner small("", 1, clock);
    for (int step = 0; step < 2; ++step) {
        const auto report = small.collect(items, 1000, 0);
        EXPECT_EQ(report.measuredCount(), 0);
        EXPECT_EQ(openDescriptors(), atRest);
    }
    StorageMeasurementReport report;
    for (int step = 0; step < 5 && report.matchingCount() < children; ++step)
        report = small.collect(items, 1000, 0);
    EXPECT_EQ(report.knownBytes(), children);
}

TEST_F(Scanner, DoesNotFollowALinkThatReplacedAnItem) {
    folder.write("outside/sub/file", "12345");
    folder.write("root/a/file", "1");
    folder.write("root/b/sub/file", "1");
    const std::vector items{item("root/a"), item("root/b/sub")};
    for (const char* name : {"a", "b"}) {
        fs::remove_all(folder / "root" / name);
        fs::create_symlink(folder / "outside", folder / "root" / name);
    }
    const auto report = scanner.collect(items, 1000, 0);
    for (const auto& record : report.records) {
        EXPECT_FALSE(record->bytes) << record->item->path;
        EXPECT_EQ(record->issue, rawValue(Failure::unavailable)) << record->item->path;
    }
}

TEST_F(Scanner, SavesOnceASecondAndAfterLongItemsAndAtTheEnd) {
    std::vector<StorageMeasurementItem> items;
    for (int name = 10; name < 40; ++name)
        items.push_back(item(std::to_string(name)));
    double itemSeconds = 0.1;
    std::string saved;
    const auto measure = [&](const fs::path&, double) {
        const auto count = fs::exists(file) ? stored().size() : 0;
        if (const std::string text = std::to_string(count) + " "; !saved.ends_with(text))
            saved += text;
        clock.advance(itemSeconds);
        return sized(1);
    };
    scanner.collect(items, 1000, 0, measure);
    EXPECT_EQ(saved, "0 11 22 ");
    EXPECT_EQ(stored().size(), 30U);

    fs::remove(file);
    saved.clear();
    itemSeconds = 1.1;
    items.resize(3);
    ComponentStorageScanner fresh(file, 1, clock);
    fresh.beginCapture();
    fresh.collect(items, 1000, 0, measure);
    EXPECT_EQ(saved, "0 1 2 ");

    fs::remove(file);
    itemSeconds = 0.1;
    ComponentStorageScanner capturing(file, 1, clock);
    capturing.beginCapture();
    capturing.collect({items[0]}, 1000, 0, measure);
    capturing.collect({items[1]}, 1000, 0, measure);
    EXPECT_FALSE(fs::exists(file)) << "a capture measures many folders in a second";
    capturing.save();
    EXPECT_EQ(stored().size(), 2U);
}

TEST_F(Scanner, AllowsOtherCallsDuringItsPauses) {
    const auto first = folder.write("a/file", "1");
    for (int name = 0; name < 2000; ++name)
        fs::create_hard_link(first, folder / "a" / std::to_string(name));
    std::stop_source stop;
    int refused = 0;
    clock.onPause = [&] {
        EXPECT_THROW(scanner.collect({item("b")}, 1, 0), Error);
        scanner.retainCursors({});
        ++refused;
    };
    EXPECT_EQ(collectOne(item("a")).bytes, 2001);
    EXPECT_EQ(refused, 1);

    clock.onPause = [&] { stop.request_stop(); };
    const auto known = collectOne(item("c"));
    const auto report = scanner.collect({item("a"), item("c")}, 100, 0, {}, stop.get_token());
    EXPECT_EQ(report.records.at(0)->attemptedAt, known.attemptedAt) << "its result was dropped";
    EXPECT_EQ(*report.records.at(1), known) << "not started";
    EXPECT_NO_THROW(collectOne(item("b")));
}

TEST_F(Scanner, IsUsableAfterAMeasureThatThrows) {
    const auto thrower = [](const fs::path&, double) -> ComponentStorageScanner::Measurement {
        throw std::runtime_error("no");
    };
    EXPECT_THROW(collectOne(item("a"), 0, thrower), std::runtime_error);
    EXPECT_EQ(collectOne(item("a"), 0, [](auto&, double) { return sized(1); }).bytes, 1);
}

TEST_F(Scanner, DoesNotOverwriteADamagedFile) {
    const std::string good =
        json::encoded(MeasurementRecords{{item("a").path, Shared(recordOf(item("a"), Date{1}))}});
    const std::string withoutAttempts = R"({"/a":{"item":{"path":"/a","name":"a","identifier":"",)"
                                        R"("version":"","build":""}}})";
    for (const std::string& bad : {std::string("{"), withoutAttempts, good + "x"}) {
        folder.write("data/records.json", bad);
        try {
            collectOne(item("a"));
            FAIL() << bad;
        } catch (const FileError& error) {
            EXPECT_TRUE(std::string_view(error.what()).starts_with(file.native() + " could not"))
                << error.what();
        }
        EXPECT_EQ(test::contents(file), bad);
    }
    fs::remove(file);
    fs::create_directories(file);
    EXPECT_THROW(collectOne(item("a")), Error);
    fs::remove(file);
    folder.write("data/records.json", good);
    EXPECT_EQ(scanner.collect({item("a")}, 0, 0).records.at(0)->bytes, 1);
}

TEST_F(Scanner, KeepsTheSizesWhenASaveFails) {
    int measured = 0;
    const auto measure = [&](const fs::path&, double) {
        clock.advance(1.5);
        return ++measured, sized(5);
    };
    collectOne(item("a"), 0, measure);
    const std::string before = test::contents(file);

    {
        const test::ResourceLimit disk(RLIMIT_FSIZE, 100);
        EXPECT_THROW(scanner.collect({item("b"), item("c")}, 10, never, measure), Error);
    }
    EXPECT_EQ(test::contents(file), before);
    EXPECT_EQ(test::namesIn(file.parent_path()), "records.json");
    EXPECT_EQ(measured, 2) << "the call fails at once";

    const auto report = scanner.collect({item("b"), item("c")}, 10, never, measure);
    EXPECT_EQ(measured, 3);
    EXPECT_EQ(report.matchingCount(), 2);
    EXPECT_EQ(stored().size(), 3U);
}

TEST_F(Scanner, DoesNotWalkAFolderTwiceInOneCapture) {
    folder.write("a/sub/deep/file", "12345");
    const auto measureBoth = [&] {
        collectOne(item("a"));
        const auto record = collectOne(item("a/sub"));
        EXPECT_EQ(record.bytes, 5);
        EXPECT_EQ(record.breakdown, (Sizes{{"deep", 5}}));
        return record.visitedEntries;
    };
    EXPECT_EQ(measureBoth(), 2) << "outside of a capture";
    scanner.beginCapture();
    EXPECT_EQ(measureBoth(), 0);
    folder.write("a/sub/deep/file", "123456789");
    EXPECT_EQ(collectOne(item("a/sub")).bytes, 5);
    scanner.beginCapture();
    EXPECT_EQ(collectOne(item("a/sub")).bytes, 9) << "a new capture measures again";
    scanner.endCapture();
    folder.write("a/sub/deep/file", "1");
    EXPECT_EQ(collectOne(item("a/sub")).bytes, 1);
}

TEST_F(Scanner, KeepsTheTenThousandRecordsAttemptedLast) {
    MeasurementRecords records;
    for (int k = 0; k < 10'000; ++k) {
        const auto one = item("item " + std::to_string(k));
        records.emplace(one.path, Shared(recordOf(one, Date{k * 1.0})));
    }
    folder.write("data/records.json", json::encoded(records));
    collectOne(item("new"), 0, [](auto&, double) { return sized(1); });

    const auto kept = stored();
    EXPECT_EQ(kept.size(), 10'000U);
    EXPECT_TRUE(kept.contains(item("new").path));
    EXPECT_FALSE(kept.contains(item("item 0").path));
    EXPECT_TRUE(kept.contains(item("item 1").path));
}

TEST_F(Scanner, KeepsTheLargestPartsOfAWideFolder) {
    for (const int count : {256, 257}) {
        SizeByName parts;
        for (int k = 0; k < count; ++k)
            parts[std::to_string(1000 + k)] = k == 200 ? 1'000'000 : 5;
        FolderSize size;
        size.breakdown.emplace(std::move(parts));
        const auto record = collectOne(item("a"), 0, [&](auto&, double) { return size; });
        EXPECT_EQ(record.breakdownComplete, count == 256);
        EXPECT_EQ(record.breakdown->size(), 256U);
        EXPECT_TRUE(record.breakdown->contains("1200"));
        EXPECT_EQ(record.breakdown->contains("1256"), false) << "of equal sizes the first by name";
        EXPECT_EQ(record.folderSize()->breakdown->size(), count == 256 ? 256U : 0U);
    }
}
