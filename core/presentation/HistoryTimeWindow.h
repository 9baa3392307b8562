#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"

#include <cstdint>
#include <string>

namespace tidemark {

/// How far back the history is shown. The raw value is what is stored.
enum class HistoryTimeWindow { day, threeDays, week, month, custom, all };

template <>
inline constexpr auto json::rawValues<HistoryTimeWindow> =
    std::to_array<json::RawValue<HistoryTimeWindow>>({
        {HistoryTimeWindow::day, "day"},
        {HistoryTimeWindow::threeDays, "threeDays"},
        {HistoryTimeWindow::week, "week"},
        {HistoryTimeWindow::month, "month"},
        {HistoryTimeWindow::custom, "custom"},
        {HistoryTimeWindow::all, "all"},
    });

/// For people. `customDays` is told by the custom window alone.
std::string label(HistoryTimeWindow window, std::int64_t customDays);

/// The moment that the window opens when it is looked at from `at`; an event at that very moment
/// is outside. The custom window reaches back `customDays`, but no less than 1 and no more than
/// 365; all of the history reaches back to the distant past.
Date cutoff(HistoryTimeWindow window, Date at, std::int64_t customDays);

} // namespace tidemark
