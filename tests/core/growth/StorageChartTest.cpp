#include "core/growth/StorageChart.h"

#include "core/growth/ChartScale.h"
#include "core/growth/StorageChartText.h"
#include "tests/core/growth/GrowthRecords.h"
#include "tests/support/Contains.h"
#include "tests/support/Failure.h"
#include "tests/support/HistoryEvents.h"

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
using test::utc;

namespace {

StorageSubject folder() {
    return {StorageSubjectKind::folder, downloads, "Downloads", true};
}

StorageChart chartOf(const GrowthSource& source, double through,
                     const StorageSubject& subject = {}) {
    return StorageChart::of(source, subject, std::nullopt, Date{through}, utc);
}

/// The points of each line, the gaps and the breaks, with times in hours: " 1 2 | 5; gap 2-5; break
/// 5 Text".
std::string shape(const StorageChart& chart) {
    std::string text;
    const auto hours = [](Date at) {
        return std::to_string(std::lround(at.secondsSince2001 / hour));
    };
    for (const auto& line : chart.lines) {
        text += text.empty() ? "" : " |";
        for (std::size_t i = line.first; i < line.first + line.count; ++i)
            text += " " + hours(chart.points[i].at);
    }
    for (const auto& gap : chart.gaps)
        text += "; gap " + hours(gap.start) + "-" + hours(gap.end);
    for (const auto& edge : chart.breaks)
        text += "; break " + hours(edge.at) + " " + edge.text;
    return text;
}

} // namespace

TEST(StorageChart, HasOneLineForAHistoryWithoutGaps) {
    std::vector<Snapshot> snapshots;
    for (int i = 0; i < 48; ++i)
        snapshots.push_back(sized(10 * day + i * hour / 2, 5 + i, {{downloads, {{"a", i}}}}));
    StorageHistory history;
    history.series = test::shared(series("", 0, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}),
                                  series(downloads, 0, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    const auto known = source(snapshots, history);
    for (const auto& subject : storageSubjects(known)) {
        SCOPED_TRACE(subject.name);
        const auto chart = chartOf(known, 11 * day, subject);
        EXPECT_EQ(chart.lines.size(), 1U);
        EXPECT_EQ(chart.points.size(), 58U);
        EXPECT_EQ(shape(chart).find("gap"), std::string::npos);
    }
}

TEST(StorageChart, JoinsOnlyWhatIsWithinTheInterval) {
    const auto kept = [](const std::vector<double>& hours) {
        std::vector<Snapshot> snapshots;
        for (const double each : hours)
            snapshots.push_back(sized(each * hour, 5));
        return snapshots;
    };
    EXPECT_EQ(shape(chartOf(source(kept({1, 2, 5, 6})), 6 * hour)), " 1 2 | 5 6; gap 2-5");
    EXPECT_EQ(shape(chartOf(source(kept({1, 2})), 9 * hour)), " 1 2; gap 2-9") << "not over yet";
    // A capture without the size is a missing point, however close the next capture is.
    auto missing = kept({1, 1.5, 2});
    missing[1].freeBytes.reset();
    EXPECT_EQ(shape(chartOf(source(missing), 2 * hour)), " 1 | 2; gap 1-2");

    StorageHistory days;
    days.series = test::shared(series("", 0, {1, 2}), series("", 4, {3}));
    EXPECT_EQ(shape(chartOf(source({}, days), 5 * day)), " 12 36 | 108; gap 36-108");
    // For the last day there is a daily size and there are kept snapshots; the chart shows the
    // snapshots, which have more points.
    EXPECT_EQ(shape(chartOf(source(kept({108, 108.5, 109}), days), 109 * hour)),
              " 12 36 | 108 109 109; gap 36-108");
}

TEST(StorageChart, BreaksAtANewVolumeAndAnotherWayOfMeasuring) {
    auto moved = sized(2 * hour, 9);
    moved.volumeID = "new disk";
    moved.volumeContext->name = "Fast";
    EXPECT_EQ(shape(chartOf(source({sized(1.5 * hour, 5), moved, sized(2.5 * hour, 5)}), 3 * hour)),
              " 2 | 2 | 3; break 2 New volume: Fast; break 3 New volume: Data");
    auto unknown = sized(1.5 * hour, 5);
    unknown.volumeID.reset();
    auto later = unknown;
    later.timestamp = Date{2 * hour};
    EXPECT_EQ(shape(chartOf(source({unknown, later}), 2 * hour)), " 2 | 2")
        << "not comparable, but nothing tells of another volume";
    auto atOnce = sized(2 * hour, 5, {{downloads, {{"a", 2}}}});
    FolderSize size = *atOnce.folders.front();
    size.rollingMeasurement.reset();
    atOnce.folders.front().emplace(std::move(size));
    EXPECT_EQ(shape(chartOf(source({sized(1.5 * hour, 5, {{downloads, {{"a", 2}}}}), atOnce}),
                            2 * hour, folder())),
              " 2 | 2; break 2 Measured in another way");
}

TEST(StorageChart, MarksSnapshotsAndEventsOfItsSubject) {
    auto known = source({sized(1 * hour, 5, {{downloads, {{"a", 2}}}})});
    Journal journal = *known.journal;
    journal.baselines = {Baseline::named("Before", journal.snapshots.front())};
    const auto changed = [](const std::string& id, Change change) {
        Event event = test::event(id, hour, EventCategory::storage);
        event.changes.push_back(std::move(change));
        return event;
    };
    const auto grown = [](const std::string& path) {
        return change::FolderSizeChanged{
            {Shared(test::folder(path, 1)), Shared(test::folder(path, 2 * gigabyte))}};
    };
    journal.events = test::shared(
        changed("downloads", grown(downloads)), changed("inside", grown("/home/Downloads/a")),
        changed("other", grown("/home/Downloads2")),
        changed("space", change::FreeDiskSpaceChanged{{1, 2}}), test::event("app", hour));
    known.journal.emplace(std::move(journal));
    const auto marks = [&](const StorageSubject& subject) {
        std::vector<Shared<Event>> events;
        for (const auto& mark : chartOf(known, 2 * hour, subject).marks)
            events.push_back(mark.event);
        return test::ids(events);
    };
    EXPECT_EQ(marks({}), "downloads inside other space");
    EXPECT_EQ(marks(folder()), "downloads inside");
    const auto chart = chartOf(known, 2 * hour, folder());
    ASSERT_EQ(chart.flags.size(), 1U);
    EXPECT_EQ(chart.flags.front().name, "Before");
    EXPECT_EQ(chart.flags.front().bytes, 2);
    EXPECT_EQ(chart.capacity, std::nullopt) << "only of free space";
    EXPECT_EQ(chartOf(known, 2 * hour).capacity, 500 * gigabyte);
}

TEST(StorageChart, IsReadByPointAndByTime) {
    // The last capture is a second early, so the time without a size is not exactly 7 hours.
    const auto chart = chartOf(source({sized(1 * hour, 5 * gigabyte), sized(2 * hour, 7 * gigabyte),
                                       sized(9 * hour - 1, 6 * gigabyte)}),
                               9 * hour);
    EXPECT_EQ(chart.nearestPoint(Date{0}), 0U);
    EXPECT_EQ(chart.nearestPoint(Date{1.6 * hour}), 1U);
    EXPECT_EQ(chart.nearestPoint(Date{1e9}), 2U);
    EXPECT_EQ(chart.gapAt(Date{5 * hour}), 0U);
    EXPECT_EQ(chart.gapAt(Date{1.5 * hour}), std::nullopt);
    EXPECT_EQ(chart.moved(std::nullopt, -1), 2U);
    EXPECT_EQ(chart.moved(0, -1), 0U);
    EXPECT_EQ(chart.moved(0, 9), 2U);
    EXPECT_EQ(chartOf(source({}), hour).moved(std::nullopt, 1), std::nullopt);
    EXPECT_TRUE(test::contains(storageChartText::sentence(chart, 1, utc), "7 GB, Monday"));
    EXPECT_TRUE(test::contains(storageChartText::sentence(chart, 1, utc), "+2 GB"));
    EXPECT_TRUE(
        test::contains(storageChartText::sentence(chart, 2, utc), "after 7 hours without a size"));
    std::string rows;
    for (const auto& row : storageChartText::rows(chart, utc))
        rows += row.size + "," + row.change + "," + row.note + ";";
    EXPECT_EQ(rows, "6 GB,,;,,7 hours without a size;7 GB,+2 GB,;5 GB,,;");
}

TEST(StorageSubject, IsFoundByNameOrPath) {
    const auto known = source(
        {sized(hour, 5, {{downloads, {{"cache", 2}}}, {"/home/Music", {}}, {"/srv/Music", {}}})});
    StorageHistory history;
    history.catchUp(known.journal->snapshots, utc);
    const GrowthSource both{known.journal, Shared(std::move(history))};
    const auto found = [&](const char* text) {
        try {
            return storageSubject(both, text).path;
        } catch (const Error& error) {
            return std::string(error.what());
        }
    };
    EXPECT_EQ(found("free"), "");
    EXPECT_EQ(found("downloads"), downloads);
    EXPECT_EQ(found("/home/Downloads/"), downloads);
    EXPECT_EQ(found("cache"), "/home/Downloads/cache");
    EXPECT_TRUE(test::contains(found("music"), "give the path of one: /home/Music, /srv/Music"));
    EXPECT_TRUE(test::contains(found("Videos"), "No size of \"Videos\" was recorded"));
}

TEST(ChartScale, HasRoundSizesThatIncludeAll) {
    const auto labels = [](std::int64_t least, std::int64_t most) {
        std::string text;
        for (const auto& tick : chartScale::sizeTicks(least, most, 5))
            text += tick.label + " ";
        return text;
    };
    EXPECT_EQ(labels(0, 9 * gigabyte), "0 5 GB 10 GB ");
    EXPECT_EQ(labels(90 * gigabyte, 99 * gigabyte), "90 GB 95 GB 100 GB ");
    EXPECT_EQ(labels(0, 0), "0 1 byte ");
    EXPECT_EQ(labels(99 * gigabyte, 100 * gigabyte), "0 50 GB 100 GB ") << "hardly any change";
    for (std::int64_t most = 1; most < 8'000'000 * gigabyte; most = most * 3 + 1)
        for (const std::int64_t least : {most / 7, most / 2, most}) {
            const auto ticks = chartScale::sizeTicks(least, most, 5);
            ASSERT_GE(ticks.size(), 2U) << most;
            ASSERT_LE(ticks.size(), 5U) << most;
            EXPECT_LE(ticks.front().bytes, least);
            EXPECT_GE(ticks.back().bytes, most);
        }
    // Only a damaged document has such sizes.
    constexpr auto largest = std::numeric_limits<std::int64_t>::max();
    for (const auto& [least, most] : {std::pair(largest, largest), std::pair(-largest, largest)}) {
        const auto ticks = chartScale::sizeTicks(least, most, 5);
        EXPECT_LT(ticks.front().bytes, ticks.back().bytes);
    }
}

TEST(ChartScale, HasNoMoreTimesThanFit) {
    const Calendar berlin("Europe/Berlin");
    double length = 60;
    while (length < 4e8) {
        const auto ticks = chartScale::timeTicks(Date{1e8}, Date{1e8 + length}, 8, berlin);
        EXPECT_LE(ticks.size(), 8U) << length;
        EXPECT_GE(ticks.size(), length < 4 * hour ? 0U : 2U) << length;
        for (const auto& tick : ticks)
            EXPECT_TRUE(Date{1e8} <= tick.at && tick.at <= Date{1e8 + length});
        length *= 1.7;
    }
}
