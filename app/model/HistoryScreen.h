#pragma once

#include "app/base/AppClock.h"
#include "app/base/TaskScope.h"
#include "app/model/EventSelection.h"
#include "app/model/HistoryMerge.h"
#include "app/model/HistoryNavigation.h"
#include "app/model/HistoryPresentation.h"
#include "app/model/ModelState.h"
#include "app/model/StateComparisons.h"
#include "core/growth/Moment.h"
#include "core/history/HistoryExport.h"
#include "core/timeline/ObservationCoverage.h"

namespace tidemark {

/// The history as the user sees it, and the commands of the history views. Merging and comparing
/// histories of thousands of events takes long, so it is done only when something changed, and each
/// step has a part of its own: the user's place (`HistoryNavigation`), the events of all sources
/// (`HistoryMerge`), those that are shown there (`HistoryPresentation`, `StateComparisons`), and
/// the selected event (`EventSelection`). Follows the state and the settings; an observer that
/// is connected to the state after this screen finds the screen up to date. Main thread only.
class HistoryScreen : public Observable {
    Q_OBJECT

public:
    using Events = std::vector<Shared<Event>>;

    /// The arguments must outlive this object. Without `isMerging` the history is never merged and
    /// stays empty, for a program that does not show it: merging takes time with each change and
    /// memory for every event.
    HistoryScreen(ModelState& state, Preferences& preferences, AppClock& clock,
                  const TaskScope& tasks, bool isMerging = true);

    /// The merged history. A copy of the pointer may be read on any thread, because the object is
    /// replaced and never changed.
    const std::shared_ptr<const MergedHistory>& history() const { return merge.history(); }
    /// Incremented with every change of the merged history.
    std::uint64_t historyRevision() const { return merge.revision(); }
    /// Merges the changes of the memory history into the history and updates the selected event.
    void setMemory(const MemoryArchive& archive);

    // The presentation.

    const TimelinePresentation& presentation() const { return shown.view().presentation; }
    const std::map<WorkspaceDestination, std::size_t>& sidebarCounts() const {
        return shown.view().sidebarCounts;
    }
    /// True while states are being compared; nothing is shown until that is done.
    bool isComparing() const { return comparisons.isRunning(); }
    /// Incremented with every change of the presentation, also at the end of a comparison: results
    /// computed for an older number are stale.
    std::uint64_t presentationRevision() const { return shown.revision(); }
    void refreshPresentation();

    const EventSelection& selection() const { return selected; }
    void setSelected(OptionalShared<Event> event);

    /// Observation gaps and access problems since the open snapshot, or in the time window.
    ObservationCoverageReport observationCoverage() const;

    /// Makes `exportReport` from the shown events. Does nothing while states are being compared and
    /// when there are no events.
    void beginExport();
    void endExport();
    /// The report of the current export.
    const std::optional<HistoryExport>& exportReport() const { return report; }

    // The user's place.

    const HistoryNavigation& place() const { return navigation; }
    /// These two are also stored as settings.
    void setRange(std::string range);
    void setCustomWindowDays(std::int64_t days);
    void setSearch(std::string search);
    void setNavigation(std::optional<SidebarDestination> next);
    void navigate(WorkspaceDestination to, bool clearSearch);
    /// See `HistoryNavigation::toggleFilter`.
    void toggleSystemFilter(WorkspaceDestination filter);
    /// Goes to the place of the event, sets the time window to the whole history, which is stored
    /// as by `setRange`, and selects the event.
    void openEvent(const Shared<Event>& event);

    // The open named snapshot.

    std::optional<Baseline> openBaseline() const;
    void setSnapshotViewMode(SnapshotViewMode mode);
    /// True when differences of two states are shown: of the open snapshot and the latest one, or
    /// of two captures.
    bool isStateComparison() const;
    /// True when events since the open snapshot may be missing.
    bool hasIncompleteSnapshotHistory() const;
    /// Opens a snapshot, if it exists.
    void openSnapshot(const Uuid& id);
    /// Called when a snapshot was deleted. If it is open, goes to the timeline.
    void forgetSnapshot(const Uuid& id);

    // The comparison of two captures.

    /// Shows the differences of two kept captures, until the user goes to another place.
    void compareCaptures(CapturePair pair);
    /// The captures that are compared; absent when none are.
    std::optional<CapturePair> comparedCaptures() const;

    /// Goes to the timeline of the last week, which contains imported records, without a search.
    /// The time window is stored as by `setRange`.
    void showImported();
    /// Opens a snapshot that was just saved. Filters and search stay.
    void showSaved(const Uuid& id);

private:
    void followState();
    void followPreferences();
    /// Updates the presentation for the sources and the place.
    void refresh();
    void show(const std::optional<Baseline>& baseline, std::optional<Events> differences);
    void showDifferences(const Shared<Snapshot>& before, const Shared<Snapshot>& after);
    void showCompared(std::optional<Events> differences);
    void changeRange(std::string range);
    std::optional<Baseline> baseline(const std::optional<Uuid>& id) const;

    ModelState& state;
    Preferences& preferences;
    AppClock& clock;

    const bool isMerging;
    HistoryMerge merge;
    HistoryNavigation navigation;
    StateComparisons comparisons;
    HistoryPresentation shown;
    EventSelection selected;
    std::optional<HistoryExport> report;
    /// The captures of the last comparison.
    std::optional<CapturePair> pair;
    RecordingMode recordingMode;
};

} // namespace tidemark
