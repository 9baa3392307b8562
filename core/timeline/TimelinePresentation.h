#pragma once

#include "core/base/Calendar.h"
#include "core/records/Event.h"

#include <array>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

namespace tidemark {

/// The events of one calendar day, in the order of the list they came from.
struct TimelineDay {
    /// The start of the day; also the record's identity.
    Date id;
    std::vector<Shared<Event>> events;

    bool operator==(const TimelineDay&) const = default;
};

/// What the history screens show: the events that passed the filters, the same grouped by day,
/// and what each category would hold.
struct TimelinePresentation {
    std::vector<Shared<Event>> events;
    std::vector<TimelineDay> days;
    std::size_t applicationCount = 0;
    std::size_t backgroundCount = 0;
    std::size_t storageCount = 0;
    std::size_t systemCount = 0;
    std::size_t networkingCount = 0;
    std::size_t fileCount = 0;
    std::size_t downloadCount = 0;
    std::size_t clipboardCount = 0;

    bool operator==(const TimelinePresentation&) const = default;

    /// The order of screens: latest first; events of one time by their id as text.
    static bool isBefore(const Shared<Event>& a, const Shared<Event>& b) {
        return a->timestamp != b->timestamp ? a->timestamp > b->timestamp : a->id < b->id;
    }
    /// In that order. Stable.
    static std::vector<Shared<Event>> newestFirst(std::vector<Shared<Event>> events);

    /// Those of the events that are later than `after` and not later than `through`, and whose
    /// texts contain `search`.
    static std::vector<Shared<Event>> matching(const std::vector<Shared<Event>>& from, Date after,
                                               Date through, std::string_view search);

    /// One pass over events that are in `newestFirst` order. An event passes when it is later
    /// than `after` and not later than `through`, its texts contain `search`, and its category is
    /// in `categories`, or, where that is absent, is `category` or `category` is absent. Counts
    /// are taken before the filter by category.
    static TimelinePresentation build(const std::vector<Shared<Event>>& from, Date after,
                                      Date through, std::optional<EventCategory> category,
                                      const std::optional<std::set<EventCategory>>& categories,
                                      std::string_view search, const Calendar& calendar);
};

} // namespace tidemark
