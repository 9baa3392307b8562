#include "core/growth/StorageChartText.h"

#include "core/base/Arithmetic.h"
#include "core/base/Text.h"
#include "core/presentation/Inspection.h"
#include "core/timeline/EventDisplay.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tidemark::storageChartText {

namespace {

struct Unit {
    double seconds;
    const char* one;
    const char* many;
};

constexpr double minute = 60;
constexpr double day = 86'400;
constexpr std::array units{Unit{365 * day, "year", "years"}, Unit{30 * day, "month", "months"},
                           Unit{day, "day", "days"}, Unit{60 * minute, "hour", "hours"},
                           Unit{minute, "minute", "minutes"}};

/// Whether a line joins the point to the one before it.
bool isJoined(const StorageChart& chart, std::size_t point) {
    return point > 0 && chart.points[point - 1].line == chart.points[point].line;
}

std::string changeBetween(const StorageChart& chart, std::size_t point) {
    const std::int64_t change =
        saturatingDifference(chart.points[point].bytes, chart.points[point - 1].bytes);
    return change == 0 ? "unchanged" : signedBytes(change);
}

/// What separates the point from the one before it.
std::string separation(const StorageChart& chart, std::size_t point) {
    const auto& at = chart.points[point].at;
    std::string text;
    const auto add = [&](const std::string& part) { text += (text.empty() ? "" : ", ") + part; };
    for (const auto& gap : chart.gaps)
        if (gap.end == at)
            add("after " + gap.text);
    for (const auto& edge : chart.breaks)
        if (edge.at == at)
            add(edge.text);
    return text;
}

/// A row with the time that it is sorted by.
struct DatedRow {
    Date at;
    Row row;
};

Row pointRow(const StorageChart& chart, std::size_t index, const Calendar& calendar) {
    const auto& point = chart.points[index];
    Row row{momentText(point.at, calendar), byteString(point.bytes), {}, {}, index};
    if (isJoined(chart, index))
        row.change = changeBetween(chart, index);
    return row;
}

/// When the event happened: at one time, or between two.
std::string datesOf(const Event& event, const Calendar& calendar) {
    return event.intervalStart == event.timestamp
               ? momentText(event.timestamp, calendar)
               : periodText(event.intervalStart, event.timestamp, calendar);
}

} // namespace

std::string lengthInWords(double seconds) {
    // Captures are a few seconds late, some more than others. So the time between two captures at
    // noon, a week apart, can be a little less than seven days.
    const double rounded = std::round(seconds / minute) * minute;
    for (const auto& unit : units) {
        const auto count = static_cast<std::int64_t>(std::floor(rounded / unit.seconds));
        if (count >= 1)
            return std::to_string(count) + " " + (count == 1 ? unit.one : unit.many);
    }
    return "less than a minute";
}

std::string momentText(Date at, const Calendar& calendar) {
    return calendar.format(at, "d MMM yyyy, HH:mm");
}

std::string periodText(Date start, Date end, const Calendar& calendar) {
    const bool isWithinDay = calendar.startOfDay(start) == calendar.startOfDay(end);
    return momentText(start, calendar) + " – "
           + (isWithinDay ? calendar.format(end, "HH:mm") : momentText(end, calendar));
}

std::string dayText(Date at, const Calendar& calendar) {
    return calendar.format(at, "EEEE, d MMMM yyyy");
}

std::string sentence(const StorageChart& chart, std::size_t point, const Calendar& calendar) {
    const auto& shown = chart.points[point];
    std::string text =
        byteString(shown.bytes) + ", " + calendar.format(shown.at, "EEEE, d MMMM yyyy, HH:mm");
    if (isJoined(chart, point))
        return text + ", " + changeBetween(chart, point);
    const std::string between = separation(chart, point);
    return between.empty() ? text : text + ", " + between;
}

std::string summary(const StorageChart& chart, const Calendar& calendar) {
    const std::string name = oneLine(chart.subject.name);
    if (chart.points.empty())
        return name + ", no complete size is known in this time.";
    const auto date = [&](Date at) { return calendar.format(at, "d MMM yyyy"); };
    return name + ", " + date(chart.points.front().at) + " – " + date(chart.points.back().at)
           + ", from " + byteString(chart.least) + " to " + byteString(chart.most) + ", last "
           + byteString(chart.points.back().bytes) + ".";
}

std::vector<std::string_view> headers() {
    return {"When", "Size", "Change", "Note"};
}

std::vector<Row> rows(const StorageChart& chart, const Calendar& calendar) {
    std::vector<DatedRow> dated;
    for (std::size_t i = 0; i < chart.points.size(); ++i)
        dated.push_back({chart.points[i].at, pointRow(chart, i, calendar)});
    // A gap or a break ends at the time of the size after it, and is listed between the two sizes.
    const auto before = [](Date at) { return at + -1e-3; };
    for (const auto& gap : chart.gaps)
        dated.push_back({before(gap.end),
                         {momentText(gap.start, calendar) + " – " + momentText(gap.end, calendar),
                          {},
                          {},
                          gap.text}});
    for (const auto& edge : chart.breaks)
        dated.push_back({before(edge.at), {momentText(edge.at, calendar), {}, {}, edge.text}});
    for (const auto& flag : chart.flags)
        dated.push_back({flag.at,
                         {momentText(flag.at, calendar),
                          flag.bytes ? byteString(*flag.bytes) : std::string(),
                          {},
                          "Snapshot: " + oneLine(flag.name)}});
    for (const auto& mark : chart.marks)
        dated.push_back(
            {mark.event->timestamp, {datesOf(*mark.event, calendar), {}, {}, mark.title}});
    std::ranges::stable_sort(dated, std::ranges::greater(), &DatedRow::at);
    std::vector<Row> rows;
    for (auto& each : dated)
        rows.push_back(std::move(each.row));
    return rows;
}

} // namespace tidemark::storageChartText
