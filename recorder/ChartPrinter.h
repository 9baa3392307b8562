#pragma once

#include "core/growth/StorageChart.h"

#include <cstddef>
#include <string>

namespace tidemark {

/// Draws a chart with ASCII characters: "*" is a measured size, "-" and "|" the line that joins
/// two, "/" a time without a size, "!" a break, "v" a named snapshot.
class ChartPrinter {
public:
    static constexpr std::size_t leastWidth = 40;
    static constexpr std::size_t mostWidth = 400;

    /// `width` is the number of columns, limited to the bounds above.
    ChartPrinter(const Calendar& calendar, std::size_t width);

    /// The summary. Where there are sizes, also the drawing, and below it what the signs stand for.
    std::string text(const StorageChart& chart) const;

private:
    const Calendar& calendar;
    std::size_t width;
};

} // namespace tidemark
