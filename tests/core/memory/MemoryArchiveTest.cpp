#include "core/memory/MemoryArchive.h"

#include "core/memory/IndexedFileObservation.h"
#include "tests/support/RecordFiller.h"
#include "tests/support/SharedRecords.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace tidemark;
using Kind = MemoryRecord::Kind;

namespace {

constexpr Date now{100 * 86'400.0};
constexpr double day = 86'400;
constexpr std::size_t megabyte = 1'000'000;

/// A record with a timestamp `age` seconds before `now`.
MemoryRecord record(const std::string& id, Kind kind, double age) {
    MemoryRecord made;
    made.id = id;
    made.kind = kind;
    made.timestamp = now + -age;
    return made;
}
MemoryRecord clip(const std::string& id, double age, bool pinned = false, std::size_t bytes = 1) {
    auto made = record(id, Kind::clipboard, age);
    made.pinned = pinned;
    made.payload = Data{std::string(bytes / 2, 'p')};
    made.text = std::string(bytes - bytes / 2, 't');
    return made;
}

std::string ids(const MemoryArchive& archive) {
    std::string text;
    for (const auto& stored : archive.records)
        text += (text.empty() ? "" : " ") + stored->id;
    return text;
}

MemoryArchive archiveOf(const std::vector<MemoryRecord>& records, std::int64_t clipboardDays = 7) {
    MemoryArchive archive;
    archive.upsert(records, now, clipboardDays);
    return archive;
}

/// Clips and launches of many ages, some with the same identifier or timestamp.
std::vector<MemoryRecord> drawnRecords() {
    std::vector<MemoryRecord> records;
    const int count = *rc::gen::inRange(0, 60);
    for (int i = 0; i < count; ++i) {
        const auto id = std::to_string(*rc::gen::inRange(0, 40));
        const double age = day * *rc::gen::inRange(-1, 40);
        const bool pinned = *rc::gen::arbitrary<bool>();
        const auto bytes = *rc::gen::weightedElement<std::size_t>({{20, 1}, {1, 9 * megabyte}});
        records.push_back(*rc::gen::arbitrary<bool>() ? clip(id, age, pinned, bytes)
                                                      : record(id, Kind::appLaunched, age));
    }
    return records;
}

} // namespace

TEST(MemoryArchive, ReplacesAllExceptPinnedAndObservedAt) {
    auto first = clip("a", 50, true);
    first.observedAt = Date{1};
    auto again = clip("a", 40, false, 100);
    again.observedAt = Date{2};
    again.lastOpened = Date{3};
    const auto archive = archiveOf({first, clip("b", 45), again});
    EXPECT_EQ(ids(archive), "a b");
    again.pinned = true;
    again.observedAt = Date{1};
    EXPECT_EQ(*archive.records[0], again);
}

TEST(MemoryArchive, KeepsKnownRecordsUnchanged) {
    const IndexedFileObservation observation{"/a/x", now, now, now, {}, {}, 5};
    auto archive = archiveOf(observation.records(Date{0}, now));
    const auto before = archive;
    ASSERT_EQ(before.records.size(), 3U);
    archive.upsert(observation.records(Date{0}, now + 60), now + 60, 7);
    EXPECT_EQ(archive, before);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_TRUE(archive.records[i].sameObject(before.records[i])) << "nothing was copied";
}

TEST(MemoryArchive, MergesDuplicatesOfADocument) {
    MemoryArchive archive;
    archive.records = test::shared(record("a", Kind::appClosed, 1), record("b", Kind::appClosed, 2),
                                   record("a", Kind::appClosed, 3));
    archive.upsert({}, now, 7);
    EXPECT_EQ(ids(archive), "a b");
}

TEST(MemoryArchive, DropsOldRecords) {
    const std::pair<std::int64_t, std::string> cases[] = {
        {7, "hour day late-day week file-edge pinned"},
        {2, "hour day late-day file-edge pinned"},
        {1, "hour day file-edge pinned"},
        {0, "hour day file-edge pinned"},
        {-5, "hour day file-edge pinned"},
        {std::numeric_limits<std::int64_t>::max(),
         "hour day late-day week late-week file-edge pinned"}};
    for (const auto& [days, expected] : cases)
        EXPECT_EQ(ids(archiveOf({record("file-late", Kind::fileOpened, 30 * day + 1),
                                 record("file-edge", Kind::fileOpened, 30 * day),
                                 clip("pinned", 31 * day, true), clip("late-week", 7 * day + 1),
                                 clip("week", 7 * day), clip("late-day", day + 1), clip("day", day),
                                 clip("hour", 3600)},
                                days)),
                  expected)
            << days;
}

TEST(MemoryArchive, AtTheLimitKeepsPinnedClipsFirst) {
    std::vector<MemoryRecord> records;
    for (int i = 0; i < 201; ++i)
        records.push_back(clip("pin" + std::to_string(i), 1000 + i, true));
    records.push_back(clip("new", 0));
    for (int i = 0; i < 10'001; ++i)
        records.push_back(record("app" + std::to_string(i), Kind::appLaunched, 2000 + i));
    const auto archive = archiveOf(records);
    EXPECT_EQ(archive.records.size(), 10'200U);
    EXPECT_EQ(archive.records[0]->id, "pin0") << "pinned clips are kept first";
    EXPECT_EQ(archive.records[199]->id, "pin199");
    EXPECT_EQ(archive.records.back()->id, "app9999");
}

TEST(MemoryArchive, KeepsSmallerClipsAfterOneThatDoesNotFit) {
    const auto archive = archiveOf(
        {clip("a", 1, false, 9 * megabyte), clip("b", 2, false, 9 * megabyte),
         clip("c", 3, false, 9 * megabyte), clip("d", 4, false, 2 * megabyte), clip("e", 5)});
    EXPECT_EQ(ids(archive), "a b d") << "two megabytes fit exactly, one byte more does not";
}

RC_GTEST_PROP(MemoryArchive, PruningTwiceIsPruningOnce, ()) {
    const auto archive = archiveOf(drawnRecords());
    auto again = archive;
    again.prune(now, 7);
    RC_ASSERT(again == archive);
    again.upsert({}, now, 7);
    RC_ASSERT(again == archive);
}

RC_GTEST_PROP(MemoryArchive, FewAndManyNewRecordsGiveTheSameArchive, ()) {
    auto few = archiveOf(drawnRecords());
    auto many = few;
    std::vector<MemoryRecord> records = drawnRecords();
    records.resize(std::min<std::size_t>(records.size(), 2));
    few.upsert(records, now, 7);
    std::vector<MemoryRecord> repeated;
    for (int i = 0; i < 5; ++i)
        repeated.insert(repeated.end(), records.begin(), records.end());
    many.upsert(repeated, now, 7);
    RC_ASSERT(few == many);
}

RC_GTEST_PROP(MemoryArchive, DoesNotDependOnTheOrderOfArrival, ()) {
    std::vector<MemoryRecord> records = drawnRecords();
    for (std::size_t i = 0; i < records.size(); ++i) {
        records[i].id = std::to_string(i);
        records[i].timestamp = records[i].timestamp + static_cast<double>(i);
    }
    const auto expected = archiveOf(records);
    std::shuffle(records.begin(), records.end(), std::mt19937(*rc::gen::arbitrary<unsigned>()));
    RC_ASSERT(archiveOf(records) == expected);
}
