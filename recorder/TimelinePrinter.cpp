#include "recorder/TimelinePrinter.h"

#include "core/base/Text.h"
#include "core/presentation/EventRow.h"
#include "core/timeline/TimelinePresentation.h"
#include "recorder/Columns.h"
#include "recorder/TextStyle.h"

#include <algorithm>

namespace tidemark {

namespace {

constexpr std::string_view prominentMark = "●";

} // namespace

std::string TimelinePrinter::moment(Date date) const {
    return calendar.format(date, "d MMM yyyy, HH:mm:ss");
}

void TimelinePrinter::append(std::string& out, const Event& event, std::size_t timeColumns) const {
    const EventRow row = EventRow::of(event, calendar);
    std::string time = row.time;
    time.append(timeColumns - columns(time), ' ');
    out += row.isProminent ? styled(prominentMark, textStyle::attention, colour) : " ";
    out += " " + styled(time, textStyle::dim, colour) + "  "
           + styled(row.title, textStyle::bold, colour) + "\n";
    const std::string indentation(timeColumns + 4, ' ');
    if (!row.subtitle.empty())
        out += indentation + row.subtitle + "\n";
    if (ids)
        out += indentation + styled(oneLine(event.id), textStyle::dim, colour) + "\n";
}

std::string TimelinePrinter::text(std::vector<Shared<Event>> events) const {
    const auto presentation = TimelinePresentation::build(
        TimelinePresentation::newestFirst(std::move(events)), Date::distantPast(),
        Date::distantFuture(), std::nullopt, std::nullopt, "", calendar);
    std::size_t timeColumns = 0;
    for (const auto& event : presentation.events)
        timeColumns = std::max(timeColumns, columns(timesOf(*event, calendar)));
    std::string out;
    for (const auto& day : presentation.days) {
        out += (out.empty() ? "" : "\n")
               + styled(calendar.format(day.id, "EEEE, d MMMM yyyy"), textStyle::bold, colour)
               + "\n";
        for (const auto& event : day.events)
            append(out, *event, timeColumns);
    }
    return out;
}

} // namespace tidemark
