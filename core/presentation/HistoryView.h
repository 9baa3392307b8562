#pragma once

#include "core/presentation/HistoryTimeWindow.h"
#include "core/presentation/MergedHistory.h"
#include "core/presentation/WorkspaceDestination.h"
#include "core/timeline/TimelinePresentation.h"

#include <map>
#include <optional>
#include <set>
#include <string>

namespace tidemark {

/// Where the user stands in the history: what narrows it to what is shown.
struct HistoryPlace {
    HistoryTimeWindow window = HistoryTimeWindow::week;
    std::int64_t customWindowDays = 3;
    WorkspaceDestination workspace = WorkspaceDestination::timeline;
    /// When there are any, events of each of these places are shown instead of the workspace's.
    std::set<WorkspaceDestination> systemFilters{};
    /// Nothing is filtered by category when this is empty.
    std::set<EventCategory> categoryFilters{};
    /// One phrase, in any letter case.
    std::string search{};
    /// A named snapshot is open: events of every workspace are shown.
    bool isInSnapshot = false;
    /// Where the window begins, for one without a name.
    std::optional<Date> windowStart{};
    /// Shows what is later than this moment, whatever the window.
    std::optional<Date> since{};
    /// The differences of two states, newest first, shown instead of the history, whatever the
    /// window.
    std::optional<std::vector<Shared<Event>>> stateComparison{};
};

/// What there is to see at a place.
struct HistoryView {
    /// At files, downloads and the clipboard: the remembered records, of each file the newest.
    TimelinePresentation presentation;
    /// What each place would hold with the present window and search. Folder sizes and snapshots
    /// have no entry. Files, downloads and clips follow the time window always.
    std::map<WorkspaceDestination, std::size_t> sidebarCounts;
};

/// A pure function, linear in the length of the history. The time window ends at `now`.
HistoryView presentHistory(const MergedHistory& history, const HistoryPlace& place, Date now,
                           const Calendar& calendar);

/// Whether an event may make a difference to the presentation at a place, or to another count than
/// those of files, downloads and clips.
bool mayAppear(const HistoryPlace& place, const Event& event);

/// Counts files, downloads and clips anew: all that changes by events that may not appear.
void recountMemory(HistoryView& view, const MergedHistory& history, const HistoryPlace& place,
                   Date now);

} // namespace tidemark
