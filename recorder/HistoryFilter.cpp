#include "recorder/HistoryFilter.h"

#include "core/presentation/HistoryView.h"
#include "recorder/HistoryReading.h"
#include "recorder/HistoryTime.h"

#include <algorithm>

namespace tidemark {

namespace {

/// The place in the history that shows the filtered events.
HistoryPlace placeOf(const HistoryFilter& filter, Date now) {
    HistoryPlace place;
    place.window = HistoryTimeWindow::all;
    if (filter.window) {
        if (const auto window = json::fromRawValue<HistoryTimeWindow>(*filter.window))
            place.window = *window;
        if (const auto days = historyTime::days(*filter.window)) {
            place.window = HistoryTimeWindow::custom;
            place.customWindowDays = *days;
        }
    }
    if (filter.since)
        place.windowStart = historyTime::since(*filter.since, now);
    place.workspace = filter.place;
    place.categoryFilters = filter.category;
    place.search = filter.search;
    return place;
}

} // namespace

void HistoryFilter::checkWindow(const std::optional<std::string>& window) {
    if (!window)
        return;
    const auto named = json::fromRawValue<HistoryTimeWindow>(*window);
    if ((named && *named != HistoryTimeWindow::custom) || historyTime::days(*window))
        return;
    throw UsageError("\"" + *window
                     + "\" is none of day, threeDays, week, month, all or 1d to 365d");
}

HistoryView filtered(const HistoryReading& reading, const HistoryFilter& filter) {
    return presentHistory(reading.history.merged(), placeOf(filter, reading.now), reading.now,
                          Calendar());
}

} // namespace tidemark
