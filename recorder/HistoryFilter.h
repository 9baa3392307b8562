#pragma once

#include "core/presentation/WorkspaceDestination.h"
#include "core/records/EventCategory.h"
#include "recorder/CommandOption.h"
#include "recorder/OptionValue.h"

#include <optional>
#include <set>
#include <string>
#include <tuple>

namespace tidemark {

struct HistoryReading;
struct HistoryView;

/// How far back a command looks: "7d", "12h", "3w" or a date.
inline constexpr std::string_view sinceHelp = "How far back: 12h, 7d, 3w or a date (2026-05-31)";

/// One word each, beside the titles that are stored.
template <>
inline constexpr auto optionAliases<EventCategory> = std::to_array<json::RawValue<EventCategory>>({
    {EventCategory::background, "background"},
    {EventCategory::system, "system"},
    {EventCategory::files, "files"},
});

/// Which events of the history a command is about, as options.
struct HistoryFilter {
    std::optional<std::string> since;
    /// The same by the name of a time window, or as a number of days.
    std::optional<std::string> window;
    std::set<EventCategory> category;
    WorkspaceDestination place = WorkspaceDestination::timeline;
    std::string search;

    /// Throws `UsageError` unless it is the name of a time window or a number of days.
    static void checkWindow(const std::optional<std::string>& window);

    static constexpr auto fields() {
        return std::tuple{
            Option{"since", &HistoryFilter::since, sinceHelp, {.excludes = "window"}},
            Option{"window",
                   &HistoryFilter::window,
                   "The same as day, threeDays, week, month, all or a number of days (10d)",
                   {},
                   &HistoryFilter::checkWindow},
            Option{"category", &HistoryFilter::category,
                   "Only events of this category; can be given several times"},
            Option{"place", &HistoryFilter::place, "What the sidebar shows under this name"},
            Option{"search", &HistoryFilter::search, "Only events with this text in them"},
        };
    }
};

/// What the filter leaves of the history. Throws `Error` for a time that is none.
HistoryView filtered(const HistoryReading& reading, const HistoryFilter& filter);

} // namespace tidemark
