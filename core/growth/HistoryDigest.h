#pragma once

#include "core/base/Calendar.h"
#include "core/growth/GapRows.h"
#include "core/growth/GrowthReport.h"
#include "core/records/EventCategory.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// A background item that was not there before.
struct NewBackgroundItem {
    std::string name;
    /// The event that reports it. It appeared at some time from `intervalStart` to `timestamp`.
    Shared<Event> event;

    bool operator==(const NewBackgroundItem&) const = default;
};

/// The background items that appear in these events, in their order; also those that were installed
/// with an application.
std::vector<NewBackgroundItem> newBackgroundItems(const std::vector<Shared<Event>>& events);

/// What happened in a period, on one card.
struct HistoryDigest {
    static constexpr std::string_view title = "Since You Last Looked";
    static constexpr std::size_t changeLimit = 3;

    struct Count {
        EventCategory category{};
        std::size_t events = 0;

        bool operator==(const Count&) const = default;
    };

    Date since;
    Date through;
    /// The categories of the timeline that have events, in the order of `EventCategory`.
    std::vector<Count> counts;
    /// The largest changes of sizes, at most `changeLimit`.
    std::vector<GrowthItem> largest;
    /// Newest first.
    std::vector<NewBackgroundItem> background;
    /// Newest first.
    std::vector<GapRow> gaps;
    /// `growthText::summary`.
    std::string freeSpace;

    bool isEmpty() const { return counts.empty() && largest.empty() && gaps.empty(); }

    /// The digest of the events of the timeline later than `since`, up to `through`. A pure
    /// function.
    static HistoryDigest of(const GrowthSource& source, const std::vector<Shared<Event>>& timeline,
                            const GapSource& gaps, Date since, Date through,
                            const Calendar& calendar);

    bool operator==(const HistoryDigest&) const = default;
};

} // namespace tidemark
