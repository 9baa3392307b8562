#pragma once

#include "core/base/Uuid.h"
#include "core/presentation/HistoryView.h"
#include "core/presentation/SidebarDestination.h"
#include "core/presentation/SnapshotViewMode.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// The user's place in the history and the moves from one place to another. Has no events;
/// `HistoryPresentation` decides which are shown.
class HistoryNavigation {
public:
    // The time window.

    /// The raw value of a `HistoryTimeWindow`; any other text means the whole history.
    const std::string& range() const { return rangeText; }
    std::int64_t customWindowDays() const { return where.customWindowDays; }
    Date timeWindowCutoff(Date at) const;
    struct TimeWindowOption {
        std::string_view range;
        std::string label;
    };
    std::vector<TimeWindowOption> timeWindowOptions() const;

    // The place.

    /// The place with time window, filters and search, but without the restrictions of the open
    /// snapshot.
    const HistoryPlace& place() const { return where; }
    const std::string& search() const { return where.search; }
    WorkspaceDestination workspace() const { return where.workspace; }
    const std::set<WorkspaceDestination>& systemFilters() const { return where.systemFilters; }
    const std::set<EventCategory>& categoryFilters() const { return where.categoryFilters; }
    const std::optional<SidebarDestination>& destination() const { return target; }
    /// The open named snapshot, if any.
    const std::optional<Uuid>& snapshot() const { return openSnapshot; }
    SnapshotViewMode viewMode() const { return mode; }
    /// True when two captures are compared.
    bool isComparison() const {
        return target && std::holds_alternative<sidebarDestination::OfComparison>(*target);
    }

    // The moves. Those that return a bool return whether the place changed.

    bool setRange(std::string range);
    bool setCustomWindowDays(std::int64_t days);
    bool setSearch(std::string search);
    /// Sets the mode of the open snapshot, which is remembered for it.
    bool setViewMode(SnapshotViewMode mode);
    bool go(std::optional<SidebarDestination> to);
    void go(WorkspaceDestination to, bool clearSearch);
    /// Opens a named snapshot. Filters and search stay.
    bool goToSnapshot(const Uuid& id);
    /// Shows the differences of two captures. Filters and search stay.
    bool goToComparison(const Uuid& from, const Uuid& to);
    /// Adds a place to the filters of the timeline or removes it. Goes to the place instead if it
    /// can't be a filter, and to the timeline when no filter is left. False when only the
    /// filters changed.
    bool toggleFilter(WorkspaceDestination filter);
    /// Called when a snapshot was deleted.
    void forget(const Uuid& id) { modes.erase(id); }

private:
    HistoryPlace where;
    std::string rangeText;
    std::optional<SidebarDestination> target;
    std::optional<Uuid> openSnapshot;
    SnapshotViewMode mode = SnapshotViewMode::timeline;
    /// The last mode of each snapshot.
    std::map<Uuid, SnapshotViewMode> modes;
};

} // namespace tidemark
