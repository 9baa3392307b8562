#pragma once

#include "core/growth/StorageChart.h"

#include <string>
#include <vector>

namespace tidemark {

/// What is written beside the cursor of a chart.
struct ChartReading {
    static constexpr std::size_t eventLimit = 3;

    /// For a point its day, "Thursday, 12 March 2026"; for a gap its text.
    std::string title;
    /// For a point: its size and time, the gap or break before it, the change since the previous
    /// point, and then the named snapshots and the events of the day. For a gap: from when to when.
    std::vector<std::string> lines;

    bool operator==(const ChartReading&) const = default;

    static ChartReading ofPoint(const StorageChart& chart, std::size_t point,
                                const Calendar& calendar);
    static ChartReading ofGap(const StorageChart& chart, std::size_t gap, const Calendar& calendar);
};

} // namespace tidemark
