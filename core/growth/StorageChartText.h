#pragma once

#include "core/growth/StorageChart.h"

#include <string>
#include <string_view>
#include <vector>

/// The texts of a chart.
namespace tidemark::storageChartText {

inline constexpr std::string_view title = "Storage Over Time";
inline constexpr std::string_view noPoints =
    "No complete size is known in this time. Sizes are recorded with each capture.";

/// A length of time in words, of the largest unit that fits: "40 minutes", "3 days", "2 months".
std::string lengthInWords(double seconds);

/// A date and time, to the minute: "12 Mar 2026, 14:05".
std::string momentText(Date at, const Calendar& calendar);
/// Two moments, with the date only once where it is the same: "12 Mar 2026, 14:05 – 15:10".
std::string periodText(Date start, Date end, const Calendar& calendar);

/// The day under the cursor: "Thursday, 12 March 2026".
std::string dayText(Date at, const Calendar& calendar);

/// One point in one sentence, for a screen reader and as a tooltip: size, time and, if a line joins
/// it to the point before, the change since that, otherwise the gap or break between the two.
std::string sentence(const StorageChart& chart, std::size_t point, const Calendar& calendar);

/// What the chart shows, in one sentence: its subject, period, smallest, largest and last size.
std::string summary(const StorageChart& chart, const Calendar& calendar);

/// One row of the chart as a table.
struct Row {
    std::string when;
    /// Empty for a row that is about something else than a size.
    std::string size;
    /// The change since the point before; empty where no line joins both, and in a row that is no
    /// point.
    std::string change;
    /// Named snapshot, new volume, gap or event; may be empty.
    std::string note;
    /// Index of the point, absent for the other rows.
    std::optional<std::size_t> point{};

    bool operator==(const Row&) const = default;
};

/// The column titles of the table: "When", "Size", "Change", "Note".
std::vector<std::string_view> headers();
/// Points, gaps, breaks, flags and events in order of time, the newest first.
std::vector<Row> rows(const StorageChart& chart, const Calendar& calendar);

} // namespace tidemark::storageChartText
