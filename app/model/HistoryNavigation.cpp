#include "app/model/HistoryNavigation.h"

#include <utility>

namespace tidemark {

Date HistoryNavigation::timeWindowCutoff(Date at) const {
    return cutoff(where.window, at, where.customWindowDays);
}

std::vector<HistoryNavigation::TimeWindowOption> HistoryNavigation::timeWindowOptions() const {
    std::vector<TimeWindowOption> options;
    for (const auto& [window, range] : json::rawValues<HistoryTimeWindow>)
        options.push_back({range, label(window, where.customWindowDays)});
    return options;
}

bool HistoryNavigation::setRange(std::string range) {
    if (range == rangeText)
        return false;
    rangeText = std::move(range);
    where.window =
        json::fromRawValue<HistoryTimeWindow>(rangeText).value_or(HistoryTimeWindow::all);
    return true;
}

bool HistoryNavigation::setCustomWindowDays(std::int64_t days) {
    return std::exchange(where.customWindowDays, days) != days;
}

bool HistoryNavigation::setSearch(std::string search) {
    if (search == where.search)
        return false;
    where.search = std::move(search);
    return true;
}

bool HistoryNavigation::setViewMode(SnapshotViewMode next) {
    if (next == mode)
        return false;
    mode = next;
    if (openSnapshot)
        modes[*openSnapshot] = next;
    return true;
}

bool HistoryNavigation::go(std::optional<SidebarDestination> to) {
    if (to == target)
        return false;
    target = std::move(to);
    openSnapshot.reset();
    where.categoryFilters.clear();
    const auto shown = target.value_or(sidebarDestination::Timeline());
    if (const auto* one = std::get_if<sidebarDestination::Category>(&shown)) {
        where.categoryFilters = {one->category};
    } else if (const auto* several = std::get_if<sidebarDestination::Categories>(&shown)) {
        where.categoryFilters = several->categories;
    } else if (const auto* baseline = std::get_if<sidebarDestination::OfBaseline>(&shown)) {
        openSnapshot = baseline->id;
        const auto last = modes.find(baseline->id);
        mode = last == modes.end() ? SnapshotViewMode::timeline : last->second;
    } else {
        mode = SnapshotViewMode::timeline;
    }
    return true;
}

void HistoryNavigation::go(WorkspaceDestination to, bool clearSearch) {
    where.systemFilters.clear();
    if (facts(to).isSystemFilter)
        where.systemFilters = {to};
    where.workspace = to;
    go(sidebarDestination::Timeline());
    if (clearSearch)
        where.search.clear();
    if (facts(to).category)
        go(sidebarDestination::Category{*facts(to).category});
}

bool HistoryNavigation::goToSnapshot(const Uuid& id) {
    where.workspace = WorkspaceDestination::snapshots;
    return go(sidebarDestination::OfBaseline{id});
}

bool HistoryNavigation::goToComparison(const Uuid& from, const Uuid& to) {
    where.workspace = WorkspaceDestination::snapshots;
    return go(sidebarDestination::OfComparison{from, to});
}

bool HistoryNavigation::toggleFilter(WorkspaceDestination filter) {
    if (!facts(filter).isSystemFilter) {
        go(filter, true);
        return true;
    }
    auto filters = where.systemFilters;
    if (filters.erase(filter) == 0)
        filters.insert(filter);
    if (filters.empty()) {
        go(WorkspaceDestination::timeline, false);
        return true;
    }
    where.workspace = filters.size() == 1 ? *filters.begin() : WorkspaceDestination::timeline;
    where.systemFilters = std::move(filters);
    // A selected category is a filter as well: it would hide the events of the places that were
    // added.
    const bool isByCategory =
        target && std::holds_alternative<sidebarDestination::Category>(*target);
    return isByCategory && go(sidebarDestination::Timeline());
}

} // namespace tidemark
