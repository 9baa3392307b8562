#pragma once

#include "app/base/AppClock.h"
#include "app/base/TaskScope.h"
#include "app/model/EventSelection.h"
#include "app/model/HistoryMerge.h"
#include "app/model/HistoryNavigation.h"
#include "app/model/HistoryPresentation.h"
#include "app/model/ModelState.h"
#include "app/model/StateComparisons.h"
#include "core/history/HistoryExport.h"
#include "core/timeline/ObservationCoverage.h"

namespace tidemark {

/// The history as the user looks at it. It has the commands, which let its parts do their work in
/// turn: where the user stands (`HistoryNavigation`), the events of all sources (`HistoryMerge`),
/// what of them is to be seen there
/// (`HistoryPresentation`, `StateComparisons`), and the event that is selected (`EventSelection`).
/// It follows the state and the settings by itself; observers of the state that were added later
/// find it up to date. Main thread only.
class HistoryScreen : public Observable {
    Q_OBJECT

public:
    using Events = std::vector<Shared<Event>>;

    /// All of these outlive this.
    HistoryScreen(ModelState& state, Preferences& preferences, AppClock& clock,
                  const TaskScope& tasks);

    /// The merged history, for the background as well.
    const std::shared_ptr<const MergedHistory>& history() const { return merge.history(); }
    /// Grows whenever the merged history became another.
    std::uint64_t historyRevision() const { return merge.revision(); }
    /// The memory history became another. Only what is new in it is merged into the history; the
    /// selected event is replaced by its newer form.
    void setMemory(const MemoryArchive& archive);

    // What is to be seen.

    const TimelinePresentation& presentation() const { return shown.view().presentation; }
    const std::map<WorkspaceDestination, std::size_t>& sidebarCounts() const {
        return shown.view().sidebarCounts;
    }
    /// The states of a snapshot are being compared, and nothing is to be seen until that is done.
    bool isComparing() const { return comparisons.isRunning(); }
    /// Grows whenever the presentation became another, also when a comparison is done: what was
    /// computed for an older number is stale.
    std::uint64_t presentationRevision() const { return shown.revision(); }
    void refreshPresentation();

    const EventSelection& selection() const { return selected; }
    void setSelected(OptionalShared<Event> event);

    /// Observation gaps and access problems since the open snapshot, or in the time window.
    ObservationCoverageReport observationCoverage() const;

    /// Makes `exportReport` of what is to be seen; nothing while states are being compared, or
    /// when there is nothing.
    void beginExport();
    void endExport();
    /// What the export that is under way writes.
    const std::optional<HistoryExport>& exportReport() const { return report; }

    // Where the user stands.

    const HistoryNavigation& place() const { return navigation; }
    /// These two are stored, too.
    void setRange(std::string range);
    void setCustomWindowDays(std::int64_t days);
    void setSearch(std::string search);
    void setNavigation(std::optional<SidebarDestination> next);
    void navigate(WorkspaceDestination to, bool clearSearch);
    /// See `HistoryNavigation::toggleFilter`.
    void toggleSystemFilter(WorkspaceDestination filter);
    /// Goes to where the event is shown, and selects it.
    void openEvent(Shared<Event> event);

    // The open named snapshot.

    std::optional<Baseline> openBaseline() const;
    void setSnapshotViewMode(SnapshotViewMode mode);
    bool isStateComparison() const;
    /// The timeline of the open snapshot may lack events.
    bool hasIncompleteSnapshotHistory() const;
    /// Goes to a snapshot, if there is one.
    void openSnapshot(const Uuid& id);
    /// A snapshot is gone. Whoever looked at it is taken to the timeline.
    void forgetSnapshot(const Uuid& id);
    /// Shows the last week, where an import has put its records, without a search.
    void showImported();
    /// Shows a snapshot that was saved just now. Filters and search stay.
    void showSaved(const Uuid& id);

private:
    void followState();
    void followPreferences();
    /// Brings what is to be seen up to date with the sources and the place.
    void refresh();
    void show(const std::optional<Baseline>& baseline, std::optional<Events> differences);
    void showCompared(std::optional<Events> differences);
    void changeRange(std::string range);
    std::optional<Baseline> baseline(const std::optional<Uuid>& id) const;

    ModelState& state;
    Preferences& preferences;
    AppClock& clock;

    HistoryMerge merge;
    HistoryNavigation navigation;
    StateComparisons comparisons;
    HistoryPresentation shown;
    EventSelection selected;
    std::optional<HistoryExport> report;
    RecordingMode recordingMode;
};

} // namespace tidemark
