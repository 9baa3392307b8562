#pragma once

#include "core/base/Calendar.h"
#include "core/records/Event.h"

#include <array>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

namespace tidemark {

/// The events of one calendar day, in the order of the given list.
struct TimelineDay {
    /// The start of the day; also the record's identity.
    Date id;
    std::vector<Shared<Event>> events;

    bool operator==(const TimelineDay&) const = default;
};

/// The history as it is shown: the events that pass the filters, the same grouped by day, and the
/// number of events in each category.
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

    /// The order in which events are shown: latest first; events of the same time by id.
    static bool isBefore(const Shared<Event>& a, const Shared<Event>& b) {
        return a->timestamp != b->timestamp ? a->timestamp > b->timestamp : a->id < b->id;
    }
    /// Sorts by `isBefore`. Stable.
    static std::vector<Shared<Event>> newestFirst(std::vector<Shared<Event>> events);

    /// The events that are later than `after`, not later than `through`, and contain `search` in
    /// their texts.
    static std::vector<Shared<Event>> matching(const std::vector<Shared<Event>>& from, Date after,
                                               Date through, std::string_view search);

    /// Takes events in `newestFirst` order. An event passes when it is later than `after` and not
    /// later than `through`, its texts contain `search`, and its category is in `categories`; if
    /// `categories` is absent, its category must be `category`, and if both are absent, every
    /// category passes. The counts ignore the filter by category.
    static TimelinePresentation build(const std::vector<Shared<Event>>& from, Date after,
                                      Date through, std::optional<EventCategory> category,
                                      const std::optional<std::set<EventCategory>>& categories,
                                      std::string_view search, const Calendar& calendar);
};

} // namespace tidemark
