#pragma once

#include "core/base/Calendar.h"
#include "core/growth/RecorderRun.h"
#include "core/journal/Journal.h"
#include "core/records/SystemActivity.h"

#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// A period in which nothing was observed, or in which one place could not be read. The timeline
/// shows it as a thin row.
struct GapRow {
    enum class Reason { unknown, asleep, notRunning, paused, unreadable };

    Date start;
    Date end;
    /// True for a gap that has not ended.
    bool isOngoing = false;
    /// Of `asleep`, `notRunning` and `paused` the one that explains most of the time, and at least
    /// half of it. `unreadable`: captures were made, but a place could not be read.
    Reason reason = Reason::unknown;
    /// "Nothing observed for 3 hours", or "A place was not read for 2 days".
    std::string title;
    /// "The computer was asleep.", or the problem of the place. Empty where the reason is unknown.
    std::string explanation;
    /// The times of the start and the end.
    std::string times;
    /// Id of the event "Captures Resumed" at its end, if the journal has one.
    std::optional<std::string> eventID{};
    /// All texts in one sentence, for a screen reader.
    std::string accessibleText;

    bool operator==(const GapRow&) const = default;
};

/// What gaps are made from; each is in order of time.
struct GapSource {
    const std::vector<Shared<Snapshot>>& snapshots;
    const std::vector<Shared<Event>>& events;
    const std::vector<Shared<SystemActivity>>& activity;
    const std::vector<RecorderRun>& runs;
};

/// The gaps of the period after `since` up to `through`, the latest end first, as the timeline is
/// ordered. A pure function.
std::vector<GapRow> gapRows(const GapSource& source, Date since, Date through,
                            const Calendar& calendar);

} // namespace tidemark
