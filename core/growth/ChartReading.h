#pragma once

#include "core/growth/StorageChart.h"

#include <string>
#include <vector>

namespace tidemark {

/// What is written beside the cursor of a chart.
struct ChartReading {
    static constexpr std::size_t eventLimit = 3;

    /// The day: "Thursday, 12 March 2026".
    std::string title;
    /// The size and the time of its measurement, what separates it from the one before, named
    /// snapshots, and the events of the day, each on a line.
    std::vector<std::string> lines;

    bool operator==(const ChartReading&) const = default;

    static ChartReading ofPoint(const StorageChart& chart, std::size_t point,
                                const Calendar& calendar);
    static ChartReading ofGap(const StorageChart& chart, std::size_t gap, const Calendar& calendar);
};

} // namespace tidemark
