#pragma once

#include "core/base/Calendar.h"
#include "core/records/Event.h"

#include <string>

namespace tidemark {

/// One event as a list shows it, each text on a single line and in the words of this system.
struct EventRow {
    std::string title;
    /// May be empty.
    std::string subtitle;
    /// The time of day; for an interval, its start and end.
    std::string time;
    /// A label for events that come from the system's log instead of a capture; empty for all
    /// others.
    std::string importedLabel;
    /// Name of the symbol image.
    std::string symbol;
    bool isProminent = false;
    /// All of that in one sentence, for a screen reader.
    std::string accessibleText;

    static EventRow of(const Event& event, const Calendar& calendar);
    bool operator==(const EventRow&) const = default;
};

/// The title of an event on one line, in the words of this system.
std::string shownTitle(const Event& event);

/// The time of day of an event under the heading of its day. For an interval that began on another
/// day, the start is written with its date, and with the year if the years differ, too.
std::string timesOf(const Event& event, const Calendar& calendar);

/// The heading of a day, given by its start: "Today", "Yesterday", or the date.
std::string dayHeading(Date day, Date now, const Calendar& calendar);

} // namespace tidemark
