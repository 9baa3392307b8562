#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"

#include <cstdint>
#include <string>

namespace tidemark {

/// How far back the history is shown. The raw value is stored.
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

/// The name that is shown. Only that of the custom window contains `customDays`.
std::string label(HistoryTimeWindow window, std::int64_t customDays);

/// The start of the window that ends at `at`; an event of the timeline at exactly that moment is
/// outside, a file, download or clip inside. `customDays` is limited to 1 to 365. For `all`,
/// returns the distant past.
Date cutoff(HistoryTimeWindow window, Date at, std::int64_t customDays);

} // namespace tidemark
