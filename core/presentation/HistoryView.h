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

/// The chosen view of the history: the sidebar item and the filters that decide what is shown.
struct HistoryPlace {
    HistoryTimeWindow window = HistoryTimeWindow::week;
    std::int64_t customWindowDays = 3;
    WorkspaceDestination workspace = WorkspaceDestination::timeline;
    /// If not empty, events of any of these sidebar items are shown instead of those of
    /// `workspace`.
    std::set<WorkspaceDestination> systemFilters{};
    /// If empty, events of every category are shown.
    std::set<EventCategory> categoryFilters{};
    /// One phrase that the events contain, in any letter case.
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

/// The part of the history that is shown in one view.
struct HistoryView {
    /// The events that are listed. In the lists of files and downloads, each file has only its
    /// newest event.
    TimelinePresentation presentation;
    /// The number of events of each sidebar item with the present time window and search; files and
    /// downloads count once per file. Folder sizes, storage over time and snapshots have no entry.
    /// Files, downloads and clips are always counted in the time window.
    std::map<WorkspaceDestination, std::size_t> sidebarCounts;
};

/// A pure function, linear in the length of the history. The time window ends at `now`.
HistoryView presentHistory(const MergedHistory& history, const HistoryPlace& place, Date now,
                           const Calendar& calendar);

/// Whether an event can change what is shown, or any count other than those of files, downloads and
/// clips.
bool mayAppear(const HistoryPlace& place, const Event& event);

/// Updates the counts of files, downloads and clips. Enough where `mayAppear` is false for all
/// events that were added or removed.
void recountMemory(HistoryView& view, const MergedHistory& history, const HistoryPlace& place,
                   Date now);

} // namespace tidemark
