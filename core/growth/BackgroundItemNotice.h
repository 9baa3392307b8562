#pragma once

#include "core/base/Calendar.h"
#include "core/growth/HistoryDigest.h"

#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// The text of a notification about new background items.
struct BackgroundItemNotice {
    /// How many of several items the text names at most.
    static constexpr std::size_t nameLimit = 5;

    /// "New background item: Backup Agent", "4 new background items".
    std::string title;
    /// If there are several, their names; then the time of the capture before they were found.
    std::string body;
    /// The event of the first item.
    std::string eventID;

    /// One notice for all items; absent when there is none.
    static std::optional<BackgroundItemNotice> of(const std::vector<NewBackgroundItem>& items,
                                                  const Calendar& calendar);

    bool operator==(const BackgroundItemNotice&) const = default;
};

} // namespace tidemark
