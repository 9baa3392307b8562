#include "core/base/JsonEncoder.h"
#include "core/growth/StorageHistoryExport.h"
#include "core/growth/StorageHistoryStore.h"
#include "tests/core/growth/GrowthRecords.h"
#include "tests/support/Contains.h"
#include "tests/support/Failure.h"
#include "tests/support/TemporaryFolder.h"

#include <cmath>

#include <gtest/gtest.h>

using namespace tidemark;
using test::day;
using test::downloads;
using test::hour;
using test::sized;
using test::utc;

namespace {

/// Points of all series as "Name time/bytes time/bytes; ", times in hours.
std::string pointsOf(const StorageHistory& history) {
    std::string text;
    for (const auto& series : history.series) {
        text += series->name;
        for (std::size_t i = 0; i < series->bytes.size(); ++i)
            text += " " + std::to_string(std::lround(series->measuredAt[i].secondsSince2001 / hour))
                    + "/" + std::to_string(series->bytes[i]);
        text += "; ";
    }
    return text;
}

std::string recorded(std::vector<Snapshot> snapshots, const Calendar& calendar = utc) {
    StorageHistory history;
    for (const auto& snapshot : snapshots)
        history.record(snapshot, calendar);
    StorageHistory atOnce;
    atOnce.catchUp(test::shared(std::move(snapshots)), calendar);
    EXPECT_EQ(atOnce, history) << "the same whether recorded one by one or at once";
    return pointsOf(history);
}

} // namespace

TEST(StorageHistory, KeepsTheLastSizeOfEachDay) {
    EXPECT_EQ(recorded({sized(9 * hour, 7), sized(23 * hour, 8), sized(day + hour, 9)}),
              "Free space 23/8 25/9; ");
    // In summer, the day of Berlin ends two hours before that of UTC.
    const double june = 150 * day;
    EXPECT_EQ(recorded({sized(june + 21 * hour, 7), sized(june + 23 * hour, 8)},
                       Calendar("Europe/Berlin")),
              "Free space 3621/7 3623/8; ");
    Snapshot unknown = sized(2 * day, 0);
    unknown.freeBytes.reset();
    Snapshot elsewhere = sized(3 * day, 5);
    elsewhere.volumeID = "other disk";
    EXPECT_EQ(recorded({sized(hour, 7), unknown, elsewhere, sized(4 * day, 6)}),
              "Free space 1/7 96/6; Free space 72/5; ");
}

TEST(StorageHistory, RecordsNoPartialSizeAndNoMeasurementTwice) {
    Snapshot whole = sized(hour, 7, {{downloads, {{"a", 2}, {"b", 3}}}});
    Snapshot partial = sized(day + hour, 7, {{downloads, {{"a", 2}, {"b", 3}}}});
    auto& child = partial.folderStorage->front().children.records.front();
    StorageMeasurementRecord unmeasured = *child;
    unmeasured.bytes.reset();
    unmeasured.measuredAt.reset();
    child.emplace(std::move(unmeasured));
    partial.folders.clear();
    // The other child still has its size of the day before.
    partial.folderStorage->front().children.records.back() =
        whole.folderStorage->front().children.records.back();
    EXPECT_EQ(recorded({whole, partial}), "Free space 1/7 25/7; Downloads 1/5; b 1/3; a 1/2; ");
}

TEST(StorageHistory, FollowsTheLargestChildren) {
    std::map<std::string, std::int64_t> children;
    for (int i = 0; i < 20; ++i)
        children["child " + std::to_string(10 + i)] = 100 - i;
    StorageHistory history;
    history.record(sized(hour, 7, {{downloads, children}}), utc);
    EXPECT_EQ(history.series.size(), 2 + StorageHistory::childLimit);
    // A child that is no longer among the largest is followed for a while.
    children["child 10"] = 91;
    history.record(sized(day, 7, {{downloads, children}}), utc);
    EXPECT_EQ(history.series.size(), 3 + StorageHistory::childLimit);
    children["child 11"] = 1;
    history.record(sized(2 * day, 7, {{downloads, children}}), utc);
    const auto points = pointsOf(history);
    EXPECT_TRUE(test::contains(points, "child 10 1/100 24/91 48/91"));
    EXPECT_TRUE(test::contains(points, "child 11 1/99 24/99; "));
}

TEST(StorageHistory, DropsWhatIsTooOldAndWhatIsFromTheFuture) {
    EXPECT_EQ(recorded({sized(hour, 1), sized(StorageHistory::secondsKept + 2 * hour, 2)}),
              "Free space " + std::to_string(366 * 240 + 2) + "/2; ");
    EXPECT_EQ(recorded({sized(hour + 0.2, 7), sized(hour + 0.7, 8)}), "Free space 1/8; ")
        << "two captures in one second";
    StorageHistory history;
    history.record(sized(100 * day, 1), utc);
    history.record(sized(2 * day, 2), utc);
    EXPECT_EQ(pointsOf(history), "Free space 48/2; ");
    // The capture of the wrong clock is still kept in the journal.
    EXPECT_FALSE(history.catchUp(test::shared(sized(100 * day, 1), sized(2 * day, 2)), utc));
    EXPECT_TRUE(history.catchUp(test::shared(sized(100 * day, 1), sized(3 * day, 3)), utc));
    EXPECT_EQ(pointsOf(history), "Free space 48/2 72/3; ");
}

TEST(StorageHistory, StoresAYearInAFewHundredKilobytes) {
    StorageHistory history;
    std::map<std::string, std::map<std::string, std::int64_t>> folders;
    for (int year = 0; year < 365; ++year) {
        for (const char* name :
             {"Desktop", "Documents", "Downloads", "Music", "Pictures", "Videos"})
            for (int child = 0; child < 10; ++child)
                folders["/home/" + std::string(name)]["child " + std::to_string(child)] =
                    10'000'000'000 + year * 1'234'567LL + child * 987'654'321LL;
        history.record(sized(year * day, 200'000'000'000 + year, folders), utc);
    }
    EXPECT_LT(json::encoded(history).size(), 450'000U);
}

TEST(StorageHistoryStore, ReadsBackWhatItSavedAndRefusesWhatIsDamaged) {
    const test::TemporaryFolder folder;
    const auto file = folder / "data/storage-history.json";
    EXPECT_EQ(StorageHistoryStore::read(file), std::nullopt);
    StorageHistory history;
    history.record(sized(hour, 7, {{downloads, {{"a", 2}}}}), utc);
    StorageHistoryStore(file).save(history);
    EXPECT_EQ(StorageHistoryStore::read(file), history);
    EXPECT_EQ(test::modeOf(file), 0600U);

    const auto damaged = [&](const std::string& series) {
        folder.write("data/storage-history.json",
                     R"({"schemaVersion":1,"series":[{"kind":"freeSpace","path":"","name":"",)"
                         + series + "}]}");
        return test::failureOf([&] { StorageHistoryStore::read(file); });
    };
    EXPECT_EQ(damaged(R"("measuredAt":[1,2],"bytes":[3,4])"), "none");
    const std::pair<const char*, const char*> cases[] = {
        {R"("measuredAt":[1,2],"bytes":[3])", "not as many dates as sizes"},
        {R"("measuredAt":[],"bytes":[])", "is empty"},
        {R"("measuredAt":[2,2],"bytes":[3,3])", "not in order"},
    };
    for (const auto& [series, problem] : cases)
        EXPECT_TRUE(test::contains(damaged(series), problem));
    folder.write("data/storage-history.json", R"({"schemaVersion":2,"series":[]})");
    EXPECT_TRUE(
        test::contains(test::failureOf([&] { StorageHistoryStore::read(file); }), "version 2"));
}

TEST(StorageHistoryExport, LeavesPrivateDetailsOutUnlessTheyAreRequested) {
    StorageHistory history;
    history.record(sized(hour, 7, {{"/home/=Downloads", {}}}), utc);
    const auto exported = [&](HistoryExport::Format format, bool isPrivate) {
        return storageHistoryExport::data(history, format, isPrivate);
    };
    using enum HistoryExport::Format;
    EXPECT_EQ(exported(csv, false),
              "\"Measured At (UTC)\",\"Kind\",\"Name\",\"Path\",\"Volume\",\"Bytes\"\r\n"
              "\"2001-01-01T01:00:00Z\",\"freeSpace\",\"Free space\",\"\",\"\",\"7\"\r\n"
              "\"2001-01-01T01:00:00Z\",\"folder\",\"'=Downloads\",\"\",\"\",\"0\"\r\n");
    EXPECT_TRUE(test::contains(exported(csv, true), "\"/home/=Downloads\",\"Data\",\"0\""));
    EXPECT_FALSE(exported(json, false).contains("/home"));
    EXPECT_TRUE(test::contains(exported(json, true),
                               R"("path":"/home/=Downloads","volume":"Data","bytes":0)"));
}
