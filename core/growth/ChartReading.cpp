#include "core/growth/ChartReading.h"

#include "core/base/Arithmetic.h"
#include "core/base/Text.h"
#include "core/growth/StorageChartText.h"
#include "core/presentation/Inspection.h"
#include "core/presentation/InspectionWords.h"

#include <algorithm>

namespace tidemark {

namespace {

/// The day of a date, in a calendar.
struct Day {
    Day(Date at, const Calendar& calendar)
        : start(calendar.startOfDay(at)), end(calendar.startOfNextDay(at)) {}

    bool contains(Date at) const { return at >= start && at < end; }

    const Date start;
    const Date end;
};

/// The time of day of `before`, preceded by the day if that is another one than that of `at`.
std::string sinceText(Date before, Date at, const Calendar& calendar) {
    const bool isSameDay = Day(at, calendar).contains(before);
    return calendar.format(before, isSameDay ? "HH:mm" : "d MMM, HH:mm");
}

void addSize(std::vector<std::string>& lines, const StorageChart& chart, std::size_t point,
             const Calendar& calendar) {
    const auto& shown = chart.points[point];
    lines.push_back(byteString(shown.bytes) + " · " + calendar.format(shown.at, "HH:mm"));
    for (const auto& gap : chart.gaps)
        if (gap.end == shown.at)
            lines.push_back("After " + gap.text);
    for (const auto& edge : chart.breaks)
        if (edge.at == shown.at)
            lines.push_back(edge.text);
    if (point == 0 || chart.points[point - 1].line != shown.line)
        return;
    const auto& before = chart.points[point - 1];
    if (const auto change = saturatingDifference(shown.bytes, before.bytes); change != 0)
        lines.push_back(signedBytes(change) + " since " + sinceText(before.at, shown.at, calendar));
}

/// Adds the events of the day, those nearest to the point first.
void addEvents(std::vector<std::string>& lines, const StorageChart& chart, Date at,
               const Calendar& calendar) {
    const Day day(at, calendar);
    std::vector<const StorageChart::Mark*> marks;
    for (const auto& mark : chart.marks)
        if (day.contains(mark.event->timestamp))
            marks.push_back(&mark);
    std::ranges::stable_sort(marks, {}, [at](const auto* mark) {
        const double distance = mark->event->timestamp - at;
        return distance < 0 ? -distance : distance;
    });
    for (std::size_t i = 0; i < std::min(marks.size(), ChartReading::eventLimit); ++i)
        lines.push_back(oneLine(marks[i]->title));
    if (marks.size() > ChartReading::eventLimit)
        lines.push_back("and " + std::to_string(marks.size() - ChartReading::eventLimit) + " more");
}

} // namespace

ChartReading ChartReading::ofPoint(const StorageChart& chart, std::size_t point,
                                   const Calendar& calendar) {
    const Date at = chart.points[point].at;
    ChartReading reading{.title = storageChartText::dayText(at, calendar), .lines = {}};
    addSize(reading.lines, chart, point, calendar);
    const Day day(at, calendar);
    for (const auto& flag : chart.flags)
        if (day.contains(flag.at))
            reading.lines.push_back("Snapshot: " + oneLine(flag.name));
    addEvents(reading.lines, chart, at, calendar);
    return reading;
}

ChartReading ChartReading::ofGap(const StorageChart& chart, std::size_t gap,
                                 const Calendar& calendar) {
    const auto& shown = chart.gaps[gap];
    return {.title = shown.text,
            .lines = {inspectionWords::interval(shown.start, shown.end, calendar)}};
}

} // namespace tidemark
