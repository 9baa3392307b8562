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

/// The user's place in the history: the selection and the filters that decide what is shown.
struct HistoryPlace {
    HistoryTimeWindow window = HistoryTimeWindow::week;
    std::int64_t customWindowDays = 3;
    WorkspaceDestination workspace = WorkspaceDestination::timeline;
    /// If not empty, events of any of these places are shown instead of those of the workspace.
    std::set<WorkspaceDestination> systemFilters{};
    /// If empty, events of every category are shown.
    std::set<EventCategory> categoryFilters{};
    /// One phrase, in any letter case.
    std::string search{};
    /// True when a named snapshot is open. Then events of every workspace are shown.
    bool isInSnapshot = false;
    /// The start of the period that is shown, instead of that of the time window.
    std::optional<Date> windowStart{};
    /// Shows events later than this, instead of those in the time window.
    std::optional<Date> since{};
    /// The differences of two states, newest first. They are shown instead of the history,
    /// regardless of the time window.
    std::optional<std::vector<Shared<Event>>> stateComparison{};
};

/// The part of the history that is shown at a place.
struct HistoryView {
    /// At files, downloads and the clipboard: the events of the memory records, for each file only
    /// the newest.
    TimelinePresentation presentation;
    /// The number of events at each place with the present time window and search. Folder sizes and
    /// snapshots have no entry. Files, downloads and clips are always counted in the time window.
    std::map<WorkspaceDestination, std::size_t> sidebarCounts;
};

/// A pure function, linear in the length of the history. The time window ends at `now`.
HistoryView presentHistory(const MergedHistory& history, const HistoryPlace& place, Date now,
                           const Calendar& calendar);

/// False when an event can change neither the presentation at a place nor any count except those of
/// files, downloads and clips.
bool mayAppear(const HistoryPlace& place, const Event& event);

/// Updates the counts of files, downloads and clips, the only change by events for which
/// `mayAppear` is false.
void recountMemory(HistoryView& view, const MergedHistory& history, const HistoryPlace& place,
                   Date now);

} // namespace tidemark
