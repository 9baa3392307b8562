#include "core/growth/TimelineRows.h"

#include "core/growth/StorageChartText.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace tidemark {

namespace {

using Kind = TimelineRow::Kind;

/// The rows of the gaps, latest first: on days with many gaps one row for all, else one for each.
class ShownGaps {
public:
    ShownGaps(const std::vector<GapRow>& gaps, const std::set<Date>& unfolded,
              const Calendar& calendar) {
        std::map<Date, std::vector<const GapRow*>, std::greater<>> byDay;
        for (const GapRow& gap : gaps)
            byDay[calendar.startOfDay(gap.end)].push_back(&gap);
        for (const auto& [day, ofDay] : byDay)
            if (ofDay.size() >= TimelineRows::foldedFrom && !unfolded.contains(day))
                addFolded(ofDay);
            else
                for (const GapRow* gap : ofDay)
                    rows.push_back({.kind = Kind::gap, .gap = Shared(GapRow(*gap))});
        for (const GapRow& gap : gaps)
            if (gap.eventID)
                coveredEvents.insert(*gap.eventID);
    }

    /// True when the row of a gap is shown in place of the event.
    bool covers(const Event& event) const {
        return event.observationGap && coveredEvents.contains(event.id);
    }
    /// Moves the rows of gaps that ended at `end` or later to `into`, as rows of `day`.
    void moveThoseSince(Date end, Date day, std::vector<TimelineRow>& into) {
        for (; next < rows.size() && rows[next].gap->end >= end; ++next) {
            rows[next].day = day;
            into.push_back(std::move(rows[next]));
        }
    }
    /// Sets the event of the row that is shown in place of `event`. Call it before the rows are
    /// moved.
    void setEvent(const Shared<Event>& event) {
        for (std::size_t i = next; i < rows.size(); ++i)
            if (rows[i].gap->eventID == event->id)
                rows[i].event = event;
    }

private:
    /// Adds one row for all these gaps, from the first start to the last end.
    void addFolded(const std::vector<const GapRow*>& gaps) {
        GapRow all = *gaps.front();
        double seconds = 0;
        for (const GapRow* gap : gaps) {
            all.start = std::min(all.start, gap->start);
            seconds += gap->end - gap->start;
        }
        all.title = "Not observed " + std::to_string(gaps.size()) + " times, "
                    + storageChartText::lengthInWords(seconds) + " in total";
        all.reason = GapRow::Reason::unknown;
        all.explanation.clear();
        all.times.clear();
        all.eventID.reset();
        all.accessibleText = all.title;
        rows.push_back({.kind = Kind::gaps, .count = gaps.size(), .gap = Shared(std::move(all))});
    }

    std::vector<TimelineRow> rows;
    std::size_t next = 0;
    /// The identifiers of the events in whose place a row is shown.
    std::set<std::string, std::less<>> coveredEvents;
};

std::string_view shortReason(GapRow::Reason reason) {
    switch (reason) {
    case GapRow::Reason::asleep:
        return "computer asleep";
    case GapRow::Reason::notRunning:
        return "Tidemark not running";
    case GapRow::Reason::paused:
        return "recording paused";
    case GapRow::Reason::unknown:
    case GapRow::Reason::unreadable:
        break;
    }
    return "";
}

} // namespace

std::vector<TimelineRow> TimelineRows::of(const TimelinePresentation& presentation,
                                          const std::vector<GapRow>& gaps,
                                          const std::set<Date>& unfolded,
                                          const Calendar& calendar) {
    std::vector<TimelineRow> rows;
    rows.reserve(presentation.events.size() + presentation.days.size() + gaps.size());
    ShownGaps shown(gaps, unfolded, calendar);
    for (const auto& event : presentation.events)
        if (shown.covers(*event))
            shown.setEvent(event);
    for (const auto& day : presentation.days) {
        const Date end = calendar.startOfNextDay(day.id);
        // A day without events has no heading; its gaps are shown above the heading of the day
        // before.
        shown.moveThoseSince(end, day.id, rows);
        rows.push_back({.kind = Kind::day, .day = day.id, .count = day.events.size()});
        for (const auto& event : day.events) {
            shown.moveThoseSince(event->timestamp, day.id, rows);
            if (!shown.covers(*event))
                rows.push_back({.kind = Kind::event, .day = day.id, .event = event});
        }
        shown.moveThoseSince(day.id, day.id, rows);
    }
    return rows;
}

EventRow eventRowOf(const GapRow& gap) {
    EventRow row;
    row.title = gap.title;
    row.subtitle =
        gap.reason == GapRow::Reason::unreadable ? gap.explanation : shortReason(gap.reason);
    row.time = gap.times;
    row.symbol = "clock";
    row.accessibleText = gap.accessibleText;
    return row;
}

} // namespace tidemark
