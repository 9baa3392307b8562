#pragma once

#include "core/presentation/WorkspaceDestination.h"
#include "core/records/EventCategory.h"
#include "recorder/CommandOption.h"
#include "recorder/HistoryTime.h"
#include "recorder/OptionValue.h"

#include <optional>
#include <set>
#include <string>
#include <tuple>

namespace tidemark {

struct HistoryReading;
struct HistoryView;

/// The help of the option for the start of the period.
inline constexpr std::string_view sinceHelp = "How far back: 12h, 7d, 3w or a date (2026-05-31)";

/// Short names of the categories, in addition to the stored titles.
template <>
inline constexpr auto optionAliases<EventCategory> = std::to_array<json::RawValue<EventCategory>>({
    {EventCategory::background, "background"},
    {EventCategory::system, "system"},
    {EventCategory::files, "files"},
});

/// Options that select events of the history.
struct HistoryFilter {
    std::optional<std::string> since;
    /// The name of a time window or a number of days.
    std::optional<std::string> window;
    std::set<EventCategory> category;
    WorkspaceDestination place = WorkspaceDestination::timeline;
    std::string search;

    /// Throws `UsageError` unless it is the name of a time window or a number of days.
    static void checkWindow(const std::optional<std::string>& window);

    static constexpr auto fields() {
        return std::tuple{
            Option{"since",
                   &HistoryFilter::since,
                   sinceHelp,
                   {.excludes = {"window"}},
                   &historyTime::checkSince},
            Option{
                "window",
                &HistoryFilter::window,
                "The period by name: day, threeDays, week, month or all; or a number of days (10d)",
                {},
                &HistoryFilter::checkWindow},
            Option{"category", &HistoryFilter::category,
                   "Only events of this category; can be given several times"},
            Option{"place", &HistoryFilter::place,
                   "Only what the sidebar of the windows shows under this name"},
            Option{"search", &HistoryFilter::search, "Only events with this text in them"},
        };
    }
};

/// The filtered history.
HistoryView filtered(const HistoryReading& reading, const HistoryFilter& filter);

} // namespace tidemark
