#pragma once

#include "core/growth/GapRows.h"
#include "core/presentation/EventRow.h"
#include "core/timeline/TimelinePresentation.h"

#include <set>
#include <string>
#include <vector>

namespace tidemark {

/// One row of the timeline.
struct TimelineRow {
    enum class Kind {
        /// The heading of a day.
        day,
        event,
        /// A period in which nothing was observed, or in which one place could not be read.
        gap,
        /// Several gaps of a day in one row.
        gaps,
    };

    Kind kind = Kind::day;
    /// The start of the day under whose heading the row is shown. A gap that ended on a day without
    /// events has the next older day with events, and is shown above its heading.
    Date day{};
    /// In a heading, the number of events of the day; in a row of several gaps, their number.
    std::size_t count = 0;
    /// The event of the row. For a gap, the event "Captures Resumed", in whose place it is shown.
    OptionalShared<Event> event{};
    OptionalShared<GapRow> gap{};

    /// Leaves out `count`: a row with another number is the same row.
    bool operator==(const TimelineRow& other) const {
        return kind == other.kind && day == other.day && event.object() == other.event.object()
               && gap == other.gap;
    }
};

/// The rows of the timeline, the newest first, each day below its heading. A gap is at the time at
/// which it ended, in place of its event "Captures Resumed"; one that ended before the earliest day
/// with events is left out. A day with `foldedFrom` gaps or more has one row for all of them,
/// unless the start of the day is in `unfolded`.
struct TimelineRows {
    static constexpr std::size_t foldedFrom = 3;

    static std::vector<TimelineRow> of(const TimelinePresentation& presentation,
                                       const std::vector<GapRow>& gaps,
                                       const std::set<Date>& unfolded, const Calendar& calendar);
};

/// A gap on one line: "Nothing observed for 8 hours · computer asleep".
EventRow eventRowOf(const GapRow& gap);

} // namespace tidemark
