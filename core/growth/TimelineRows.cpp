#include "core/growth/TimelineRows.h"

#include "core/growth/StorageChartText.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace tidemark {

namespace {

using Kind = TimelineRow::Kind;

/// The gaps that are shown, folded by day, the latest first.
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
                resumed.insert(*gap.eventID);
    }

    /// True when a gap stands for the event.
    bool covers(const Event& event) const {
        return event.observationGap && resumed.contains(event.id);
    }
    /// Appends those that ended at `until` or later.
    void takeUntil(Date until, Date day, std::vector<TimelineRow>& into) {
        for (; next < rows.size() && rows[next].gap->end >= until; ++next) {
            rows[next].day = day;
            into.push_back(std::move(rows[next]));
        }
    }
    /// Sets the event of the row that stands for it. Has no effect on rows that were taken.
    void giveEvent(const Shared<Event>& event) {
        for (std::size_t i = next; i < rows.size(); ++i)
            if (rows[i].gap->eventID == event->id)
                rows[i].event = event;
    }

private:
    /// One gap from the first start to the last end.
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
    std::set<std::string, std::less<>> resumed;
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
            shown.giveEvent(event);
    for (const auto& day : presentation.days) {
        const Date end = calendar.startOfNextDay(day.id);
        // Gaps that ended after this day are above its heading: a day without events has none.
        shown.takeUntil(end, day.id, rows);
        rows.push_back({.kind = Kind::day, .day = day.id, .count = day.events.size()});
        for (const auto& event : day.events) {
            shown.takeUntil(event->timestamp, day.id, rows);
            if (!shown.covers(*event))
                rows.push_back({.kind = Kind::event, .day = day.id, .event = event});
        }
        shown.takeUntil(day.id, day.id, rows);
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
