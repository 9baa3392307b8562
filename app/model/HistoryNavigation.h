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

/// Where the user stands in the history, and the ways from one place to another. A value that knows
/// no event: what is to be seen there is for others to say.
class HistoryNavigation {
public:
    // The time window.

    /// The raw value of a `HistoryTimeWindow`; any other text shows all of the history.
    const std::string& range() const { return rangeText; }
    std::int64_t customWindowDays() const { return where.customWindowDays; }
    Date timeWindowCutoff(Date at) const;
    struct TimeWindowOption {
        std::string_view range;
        std::string label;
    };
    std::vector<TimeWindowOption> timeWindowOptions() const;

    // The place.

    /// With the window, the filters and the search; without what a snapshot narrows.
    const HistoryPlace& place() const { return where; }
    const std::string& search() const { return where.search; }
    WorkspaceDestination workspace() const { return where.workspace; }
    const std::set<WorkspaceDestination>& systemFilters() const { return where.systemFilters; }
    const std::set<EventCategory>& categoryFilters() const { return where.categoryFilters; }
    const std::optional<SidebarDestination>& destination() const { return target; }
    /// The open named snapshot, if any.
    const std::optional<Uuid>& snapshot() const { return openSnapshot; }
    SnapshotViewMode viewMode() const { return mode; }

    // The ways. Those that return a bool return whether anything became another.

    bool setRange(std::string range);
    bool setCustomWindowDays(std::int64_t days);
    bool setSearch(std::string search);
    /// Of the open snapshot, which keeps it for the next time.
    bool setViewMode(SnapshotViewMode mode);
    bool go(std::optional<SidebarDestination> to);
    void go(WorkspaceDestination to, bool clearSearch);
    /// To a named snapshot, from wherever the user is; filters and search stay.
    bool goToSnapshot(const Uuid& id);
    /// Adds a place to what narrows the timeline, or takes it out. A place that is no such filter
    /// is gone to, as the timeline is when no filter is left. True when the user has left where he
    /// was.
    bool toggleFilter(WorkspaceDestination filter);
    /// A snapshot is gone.
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
