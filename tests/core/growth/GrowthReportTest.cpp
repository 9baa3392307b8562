#include "core/growth/GrowthReport.h"

#include "core/growth/GrowthText.h"
#include "tests/core/growth/GrowthRecords.h"

#include <cmath>

#include <gtest/gtest.h>

using namespace tidemark;
using test::day;
using test::downloads;
using test::gigabyte;
using test::hour;
using test::series;
using test::sized;
using test::source;

namespace {

using Folders = std::map<std::string, std::map<std::string, std::int64_t>>;

GrowthReport reportOf(const GrowthSource& source, double since, double through) {
    return GrowthReport::of(source, Date{since}, Date{through});
}

/// The summary for two captures an hour apart, with this free space in GB and these sizes of
/// folders.
std::string summaryOf(std::int64_t freeBefore, std::int64_t freeAfter, const Folders& before,
                      const Folders& after) {
    return growthText::summary(reportOf(source({sized(hour, freeBefore * gigabyte, before),
                                                sized(2 * hour, freeAfter * gigabyte, after)}),
                                        hour, 3 * hour));
}

/// "name change share%; " of each item.
std::string itemsOf(const GrowthReport& report) {
    std::string text;
    for (const auto& item : report.items)
        text += item.name + " " + std::to_string(item.change()) + " "
                + std::to_string(std::lround(item.share * 100)) + "%; ";
    return text;
}

StorageMeasurementReport sizesOf(const std::map<std::string, std::int64_t>& applications) {
    StorageMeasurementReport report;
    for (const auto& [name, bytes] : applications) {
        StorageMeasurementRecord record;
        record.item = Shared(StorageMeasurementItem::application(test::application(name)));
        record.measuredItem = record.item;
        record.bytes = bytes;
        report.records.emplace_back(std::move(record));
    }
    return report;
}

Snapshot withApplications(double time, const std::map<std::string, std::int64_t>& applications) {
    Snapshot made = sized(time, gigabyte);
    for (const auto& [name, bytes] : applications)
        test::add(made.applications, test::application(name));
    made.applicationStorage = sizesOf(applications);
    return made;
}

} // namespace

TEST(GrowthReport, SaysHowMuchOfFreeSpaceIsExplained) {
    const auto folder = [](std::int64_t size) {
        return Folders{{downloads, {{"a", size * gigabyte}}}};
    };
    EXPECT_EQ(summaryOf(50, 38, folder(10), folder(19)),
              "12 GB less free; 9 GB of it in folders you monitor.");
    EXPECT_EQ(summaryOf(50, 48, folder(10), folder(19)),
              "2 GB less free; the folders you monitor grew by 9 GB.");
    EXPECT_EQ(summaryOf(50, 48, folder(10), folder(10)),
              "2 GB less free; the folders you monitor have not changed.");
    EXPECT_EQ(summaryOf(50, 48, folder(10), folder(9)),
              "2 GB less free, although the folders you monitor shrank by 1 GB.");
    EXPECT_EQ(summaryOf(50, 60, folder(10), folder(3)),
              "10 GB more free; 7 GB of it in folders you monitor.");
    EXPECT_EQ(summaryOf(50, 50, folder(10), folder(3)), "Free space is the same.");
    EXPECT_EQ(summaryOf(50, 48, {}, folder(3)), "2 GB less free.");

    auto other = sized(2 * hour, 1, folder(12));
    other.volumeID = "other disk";
    auto moved = reportOf(source({sized(hour, 2, folder(10)), other}), hour, 3 * hour);
    EXPECT_EQ(
        growthText::remarks(moved),
        (std::vector<std::string>{"Free space can’t be compared: it is that of another volume.",
                                  "No comparable size at both ends: Downloads."}));
    EXPECT_EQ(growthText::summary(moved), "No size is known at both ends of this period.");
}

TEST(GrowthReport, CountsAFolderInsideAnotherOnce) {
    const auto report = reportOf(
        source(
            {sized(hour, 1,
                   {{"/home", {{"x", 1}}}, {"/home/Music", {{"x", 1}}}, {"/srv", {{"x", 9}}}}),
             sized(2 * hour, 1,
                   {{"/home", {{"x", 41}}}, {"/home/Music", {{"x", 11}}}, {"/srv", {{"x", 4}}}})}),
        hour, 3 * hour);
    EXPECT_EQ(report.monitoredChange, 35);
    EXPECT_EQ(itemsOf(report), "home 40 100%; Music 10 25%; srv -5 100%; ");
    EXPECT_EQ(report.items.front().parts, (std::vector<StorageContribution>{{"x", 1, 41}}));
    const auto ofAll = source({sized(hour, 1, {{"/", {{"x", 1}}}, {"/srv", {{"x", 1}}}}),
                               sized(2 * hour, 1, {{"/", {{"x", 8}}}, {"/srv", {{"x", 5}}}})});
    EXPECT_EQ(reportOf(ofAll, hour, 3 * hour).monitoredChange, 7);
}

TEST(GrowthReport, ComparesOnlySizesOfThePeriod) {
    StorageHistory history;
    // Sizes until day 4, and again from day 20 on.
    history.series =
        test::shared(series(downloads, 0, {1, 2, 3, 4, 5}), series(downloads, 20, {50, 51, 52}));
    const auto all = source({}, history);
    const auto changes = [&](double since, double through) {
        return itemsOf(reportOf(all, since * day, through * day));
    };
    EXPECT_EQ(changes(1, 4), "Downloads 3 100%; ");
    EXPECT_EQ(changes(10, 30), "Downloads 2 100%; ") << "the size of day 4 is too old";
    EXPECT_EQ(changes(6, 10), "") << "no size in the period";
    EXPECT_EQ(changes(21.9, 22.1), "") << "one size";
}

TEST(GrowthReport, FindsTheChildrenOfEarlierYears) {
    StorageHistory history;
    auto child = series("/home/Downloads/cache", 0, {10, 10, 60});
    child.kind = StorageSubjectKind::childFolder;
    history.series = test::shared(series(downloads, 0, {20, 20, 70}), child);
    const auto report = reportOf(source({}, history), 0, 5 * day);
    ASSERT_EQ(report.items.size(), 1U);
    EXPECT_EQ(report.items.front().parts, (std::vector<StorageContribution>{{"cache", 10, 60}}));
}

TEST(GrowthReport, ListsApplicationsThatAreNewGoneOrOfAnotherSize) {
    const auto report =
        reportOf(source({withApplications(hour, {{"Old", 500}, {"Same", 7}, {"Larger", 100}}),
                         withApplications(2 * hour, {{"New", 800}, {"Same", 7}, {"Larger", 150}})}),
                 hour, 3 * hour);
    EXPECT_EQ(itemsOf(report), "New 800 94%; Old -500 100%; Larger 50 6%; ");
    EXPECT_EQ(report.items[0].state, GrowthItem::State::appeared);
    EXPECT_EQ(report.items[1].state, GrowthItem::State::gone);

    // What is new and has no size is listed, but with no number.
    auto unmeasured = withApplications(2 * hour, {{"New", 800}});
    unmeasured.applicationStorage.reset();
    const auto unknown = reportOf(source({withApplications(hour, {}), unmeasured}), hour, 3 * hour);
    ASSERT_EQ(unknown.items.size(), 1U);
    const auto row = growthText::row(unknown.items.front(), Calendar("UTC"));
    EXPECT_EQ(row.before + "|" + row.after + "|" + row.change + "|" + row.share, "—|Unknown|New|");
}
