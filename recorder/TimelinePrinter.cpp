#include "recorder/TimelinePrinter.h"

#include "core/base/Text.h"
#include "core/timeline/EventDisplay.h"
#include "core/timeline/TimelinePresentation.h"
#include "recorder/Columns.h"

#include <algorithm>

namespace tidemark {

namespace {

/// Escape sequences of ECMA-48 ("select graphic rendition").
constexpr std::string_view bold = "\033[1m";
constexpr std::string_view dim = "\033[2m";
constexpr std::string_view attention = "\033[1;33m";
constexpr std::string_view plain = "\033[0m";

constexpr std::string_view prominentMark = "●";

} // namespace

std::string TimelinePrinter::styled(std::string_view text, std::string_view style) const {
    return colour ? std::string(style) + std::string(text) + std::string(plain) : std::string(text);
}

std::string TimelinePrinter::moment(Date date) const {
    return calendar.format(date, "d MMM yyyy, HH:mm:ss");
}

/// The format of the start of an interval, with only the parts that differ from the day of the
/// event.
const char* TimelinePrinter::startPattern(const Event& event) const {
    using namespace std::chrono;
    const year_month_day start(floor<days>(calendar.clockAt(event.intervalStart)));
    const year_month_day end(floor<days>(calendar.clockAt(event.timestamp)));
    if (start == end)
        return "HH:mm";
    return start.year() == end.year() ? "d MMM HH:mm" : "d MMM yyyy HH:mm";
}

std::string TimelinePrinter::times(const Event& event) const {
    std::string end = calendar.format(event.timestamp, "HH:mm");
    if (event.intervalStart == event.timestamp)
        return end;
    const std::string start = calendar.format(event.intervalStart, startPattern(event));
    return start == end ? end : start + " – " + end;
}

void TimelinePrinter::append(std::string& out, const Event& event, std::size_t timeColumns) const {
    const bool prominent = event.importance == Importance::prominent;
    std::string time = times(event);
    time.append(timeColumns - columns(time), ' ');
    out += prominent ? styled(prominentMark, attention) : " ";
    out += " " + styled(time, dim) + "  " + styled(oneLine(displayTitle(event)), bold);
    out += "\n";
    if (const std::string subtitle = displaySubtitle(event); !subtitle.empty())
        out += std::string(timeColumns + 4, ' ') + oneLine(subtitle) + "\n";
}

std::string TimelinePrinter::text(std::vector<Shared<Event>> events) const {
    const auto presentation = TimelinePresentation::build(
        TimelinePresentation::newestFirst(std::move(events)), Date::distantPast(),
        Date::distantFuture(), std::nullopt, std::nullopt, "", calendar);
    std::size_t timeColumns = 0;
    for (const auto& event : presentation.events)
        timeColumns = std::max(timeColumns, columns(times(*event)));
    std::string out;
    for (const auto& day : presentation.days) {
        out += (out.empty() ? "" : "\n")
               + styled(calendar.format(day.id, "EEEE, d MMMM yyyy"), bold) + "\n";
        for (const auto& event : day.events)
            append(out, *event, timeColumns);
    }
    return out;
}

} // namespace tidemark
