#include "core/growth/ChartLayout.h"

#include "core/growth/ChartColumns.h"
#include "core/growth/ChartReading.h"
#include "tests/core/growth/GrowthRecords.h"
#include "tests/support/HistoryEvents.h"

#include <algorithm>

#include <gtest/gtest.h>

using namespace tidemark;
using test::day;

namespace {

/// A chart of one line, a point a day.
StorageChart dailyChart(const std::vector<std::int64_t>& sizes) {
    StorageChart chart;
    for (std::size_t i = 0; i < sizes.size(); ++i)
        chart.points.push_back({.at = Date{static_cast<double>(i) * day}, .bytes = sizes[i]});
    chart.lines = {{.first = 0, .count = sizes.size()}};
    chart.since = Date{0};
    chart.through = Date{static_cast<double>(sizes.size() - 1) * day};
    chart.least = std::ranges::min(sizes);
    chart.most = std::ranges::max(sizes);
    return chart;
}

ChartLayout layoutOf(const StorageChart& chart) {
    return ChartLayout::of(chart,
                           {.width = 500, .height = 300, .leading = 100, .top = 50, .bottom = 50},
                           Calendar("UTC"));
}

} // namespace

TEST(ChartLayout, HoldsASizeUntilTheNextOneWasMeasured) {
    const auto layout = layoutOf(dailyChart({0, 0, 0, 10'000, 5'000}));
    ASSERT_EQ(layout.lines.size(), 1U);
    const std::vector<ChartLayout::Position> steps{
        {100, 250}, {400, 250}, {400, 50}, {500, 50}, {500, 150}};
    EXPECT_EQ(layout.lines[0], steps);
    EXPECT_EQ(layout.dateAt(300), Date{2 * day});
    EXPECT_EQ(layout.dateAt(-50), Date{0}) << "outside of the plot";
}

TEST(ChartLayout, BeginsTheAxisWhereTheSizesCanBeToldApart) {
    const struct {
        const char* what;
        std::vector<std::int64_t> sizes;
        bool isCut;
    } cases[] = {
        {"small changes of a large size", {200'000'000'000, 230'000'000'000}, true},
        {"sizes from small to large", {10'000'000'000, 230'000'000'000}, false},
        {"a level size", {13'400'000'000, 13'400'000'000}, false},
        {"hardly any change", {200'000'000'000, 200'100'000'000}, false},
        {"nothing", {0, 0}, false},
    };
    for (const auto& [what, sizes, isCut] : cases) {
        SCOPED_TRACE(what);
        const auto layout = layoutOf(dailyChart(sizes));
        EXPECT_EQ(layout.isCut(), isCut);
        for (const auto size : sizes) {
            EXPECT_GE(layout.y(size), layout.top);
            EXPECT_LE(layout.y(size), layout.bottom);
        }
    }
}

TEST(ChartLayout, LeavesOutATimeBeforeTheFirstSize) {
    StorageChart chart = dailyChart({1, 2});
    chart.since = Date{-100 * day};
    EXPECT_EQ(layoutOf(chart).since, Date{0});
    chart.points.clear();
    chart.lines.clear();
    EXPECT_EQ(layoutOf(chart).since, Date{-100 * day});
}

TEST(ChartLayout, ShowsAllOfAPeriodOfLessThanAnHour) {
    for (const double length : {0.0, 60.0, 3'000.0}) {
        StorageChart chart = dailyChart({1, 2});
        chart.points.back().at = chart.through = Date{length};
        const auto layout = layoutOf(chart);
        for (const auto& point : chart.points)
            EXPECT_TRUE(layout.isPlot(layout.x(point.at), 100)) << length;
        EXPECT_DOUBLE_EQ(layout.through - layout.since, 3'600);
    }
}

TEST(ChartReading, NamesTheDayAndItsEvents) {
    StorageChart chart = dailyChart({1'000'000'000, 4'000'000'000});
    for (int i = 0; i < 5; ++i) {
        const std::string title = "Event " + std::to_string(i);
        chart.marks.push_back({Shared(test::event(title, day + 3'600 * (5 - i))), title});
    }
    chart.flags.push_back({.at = Date{day}, .baseline = {}, .snapshot = {}, .name = "Before"});
    const auto reading = ChartReading::ofPoint(chart, 1, Calendar("UTC"));
    EXPECT_EQ(reading.title, "Tuesday, 2 January 2001");
    EXPECT_EQ(reading.lines, (std::vector<std::string>{"4 GB · 00:00", "+3 GB since 1 Jan, 00:00",
                                                       "Snapshot: Before", "Event 4", "Event 3",
                                                       "Event 2", "and 2 more"}));
}

TEST(ChartColumns, CoverWhatTheStepsCover) {
    using Positions = std::vector<ChartLayout::Position>;
    const struct {
        const char* what;
        Positions steps;
        std::vector<chartColumns::Run> runs;
    } cases[] = {
        {"a line of one point", {{10, 50}}, {}},
        {"a level", {{10, 50}, {14.6, 50}}, {{10, 15, 49, 51}}},
        {"a step down and its corners",
         {{10, 50}, {20, 50}, {20, 80}, {30, 80}},
         {{10, 19, 49, 51}, {19, 21, 49, 81}, {21, 30, 79, 81}}},
        {"steps in one column reach as far as all of them",
         {{10, 50}, {20, 50}, {20, 80}, {20.2, 80}, {20.2, 30}, {30, 30}},
         {{10, 19, 49, 51}, {19, 21, 29, 81}, {21, 30, 29, 31}}},
        {"a step at the end", {{10, 50}, {12, 50}, {12, 40}}, {{10, 11, 49, 51}, {11, 13, 39, 51}}},
    };
    for (const auto& [what, steps, runs] : cases)
        EXPECT_EQ(chartColumns::of(steps, 2), runs) << what;
}

TEST(ChartColumns, AreNoMoreThanThePixels) {
    std::vector<ChartLayout::Position> steps;
    for (int i = 0; i < 10'000; ++i) {
        const int column = i / 2;
        steps.push_back({100 + column * 0.08, column % 2 == 0 ? 50.0 : 250.0});
    }
    EXPECT_LE(chartColumns::of(steps, 2).size(), 402U);
}
