#include "core/presentation/EventRow.h"

#include "core/presentation/EventParts.h"
#include "core/presentation/SystemWords.h"

namespace tidemark {

namespace {

using systemWords::shown;

/// The start of an interval is written with the date or year only where they differ from those of
/// the event's heading.
const char* startPattern(const Event& event, const Calendar& calendar) {
    using namespace std::chrono;
    const year_month_day start(floor<days>(calendar.clockAt(event.intervalStart)));
    const year_month_day end(floor<days>(calendar.clockAt(event.timestamp)));
    if (start == end)
        return "HH:mm";
    return start.year() == end.year() ? "d MMM HH:mm" : "d MMM yyyy HH:mm";
}

void append(std::string& sentence, std::string_view part) {
    if (!part.empty())
        sentence.append(sentence.empty() ? "" : ", ").append(part);
}

} // namespace

std::string shownTitle(const Event& event) {
    return eventParts::joined(eventParts::title(event));
}

std::string timesOf(const Event& event, const Calendar& calendar) {
    std::string end = calendar.format(event.timestamp, "HH:mm");
    if (event.intervalStart == event.timestamp)
        return end;
    const std::string start = calendar.format(event.intervalStart, startPattern(event, calendar));
    return start == end ? end : start + " – " + end;
}

std::string dayHeading(Date day, Date now, const Calendar& calendar) {
    const Date today = calendar.startOfDay(now);
    if (day == today)
        return "Today";
    if (calendar.startOfNextDay(day) == today)
        return "Yesterday";
    return calendar.format(day, "EEEE, d MMMM yyyy");
}

EventRow EventRow::of(const Event& event, const Calendar& calendar) {
    EventRow row;
    row.title = shownTitle(event);
    row.subtitle = eventParts::joined(eventParts::subtitle(event));
    row.time = timesOf(event, calendar);
    if (event.installationRecord)
        row.importedLabel = shown("Imported from macOS");
    row.symbol = event.symbol;
    row.isProminent = event.importance == Importance::prominent;
    for (const auto& part : {row.title, row.subtitle, row.time, row.importedLabel})
        append(row.accessibleText, part);
    append(row.accessibleText, row.isProminent ? "important" : "");
    return row;
}

} // namespace tidemark
