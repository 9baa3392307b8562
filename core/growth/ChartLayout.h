#pragma once

#include "core/growth/StorageChart.h"

#include <vector>

namespace tidemark {

/// Where a chart is on a surface: lengths in the unit of the surface, times from left to right, `y`
/// downwards. A window that is laid out from right to left mirrors it.
struct ChartLayout {
    struct Metrics {
        double width = 0;
        double height = 0;
        /// The space before the plot, for the sizes of the axis, and after it, for the latest size.
        double leading = 0;
        double trailing = 0;
        /// The space above the plot, for the names of snapshots, and below it, for the dates of the
        /// axis.
        double top = 0;
        double bottom = 0;
        /// The least distance of two dates, and of two sizes.
        double dateWidth = 90;
        double sizeHeight = 36;
    };
    struct Position {
        double x = 0;
        double y = 0;

        bool operator==(const Position&) const = default;
    };
    /// A line of the grid.
    struct Tick {
        double at = 0;
        std::string label;
    };

    double left = 0;
    double right = 0;
    double top = 0;
    double bottom = 0;
    Date since;
    Date through;
    /// The sizes at the bottom and the top of the plot.
    std::int64_t least = 0;
    std::int64_t most = 0;
    std::vector<Tick> sizes;
    std::vector<Tick> dates;
    /// For each line of the chart, the corners of its steps: a size holds until the next one was
    /// measured. A single position for a line of one point.
    std::vector<std::vector<Position>> lines;

    /// True when the axis of sizes does not begin at 0.
    bool isCut() const { return least > 0; }
    double x(Date at) const;
    double y(std::int64_t bytes) const;
    Date dateAt(double x) const;
    bool isPlot(double x, double y) const;

    static ChartLayout of(const StorageChart& chart, const Metrics& metrics,
                          const Calendar& calendar);
};

} // namespace tidemark
