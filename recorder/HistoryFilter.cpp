#include "recorder/HistoryFilter.h"

#include "core/presentation/HistoryView.h"
#include "recorder/HistoryReading.h"
#include "recorder/HistoryTime.h"

#include <algorithm>

namespace tidemark {

namespace {

/// The place of a screen that shows what the filter leaves.
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

/// Files, downloads and clips have places of their own and stand in no timeline.
bool isOfMemory(const HistoryPlace& place) {
    const auto category = facts(place.workspace).category;
    return (category && !appearsInTimeline(*category))
           || !std::ranges::all_of(place.categoryFilters, appearsInTimeline);
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
    MergedHistory history = reading.history.merged();
    HistoryPlace place = placeOf(filter, reading.now);
    if (isOfMemory(place)) {
        history.timeline = history.events;
        if (place.workspace == WorkspaceDestination::timeline)
            place.workspace = WorkspaceDestination::snapshots;
    }
    return presentHistory(history, place, reading.now, Calendar());
}

} // namespace tidemark
