#pragma once

#include "app/model/ModelServices.h"
#include "app/model/ModelState.h"
#include "core/history/HistoryExport.h"
#include "core/memory/MemoryEventList.h"
#include "core/presentation/HistoryView.h"
#include "core/presentation/SidebarDestination.h"
#include "core/presentation/SnapshotViewMode.h"
#include "core/timeline/ObservationCoverage.h"

namespace tidemark {

/// The history as the user looks at it: the events of all sources merged, where the user stands in
/// them, and what is to be seen there. It follows the state by itself; observers of the state that
/// were added later find it up to date. Main thread only.
class HistoryScreen : public Observable {
    Q_OBJECT

public:
    using Events = std::vector<Shared<Event>>;

    HistoryScreen(ModelState& shared, const ModelServices& used);

    /// Grows whenever the merged history itself became another.
    std::uint64_t historyRevision() const { return merges; }
    const Events& fullHistory() const { return merged->full; }
    const Events& historyEvents() const { return merged->events; }
    const Events& timelineEvents() const { return merged->timeline; }
    /// The same lists, for the background.
    std::shared_ptr<const MergedHistory> history() const { return merged; }
    /// The memory history became another. Only what is new in it is merged into the history; the
    /// selected event is replaced by its newer form.
    void setMemory(const MemoryArchive& archive);

    // What is to be seen.

    const TimelinePresentation& presentation() const { return view.presentation; }
    const std::map<WorkspaceDestination, std::size_t>& sidebarCounts() const {
        return view.sidebarCounts;
    }
    /// The states of a snapshot are being compared, and nothing is to be seen until that is done.
    bool isComparing() const { return comparing; }
    /// Grows whenever the presentation became another, also when a comparison is done: what was
    /// computed for an older number is stale.
    std::uint64_t presentationRevision() const { return refreshes; }
    void refreshPresentation();

    /// The event of the inspector, if any.
    const OptionalShared<Event>& selected() const { return selectedEvent; }
    void setSelected(OptionalShared<Event> event);
    /// Another identifier asks the list to scroll to its top.
    const Uuid& historyScrollRequest() const { return scrollRequest; }

    /// Observation gaps and access problems since the open snapshot, or in the time window.
    ObservationCoverageReport observationCoverage() const;

    /// Makes `exportReport` of what is to be seen; nothing while states are being compared, or
    /// when there is nothing.
    void beginExport();
    void endExport();
    /// What the export that is under way writes.
    const std::optional<HistoryExport>& exportReport() const { return report; }

    // Where the user stands.

    /// The raw value of a `HistoryTimeWindow`; any other text shows all of the history.
    const std::string& range() const { return rangeText; }
    void setRange(std::string range);
    std::int64_t customWindowDays() const { return place.customWindowDays; }
    void setCustomWindowDays(std::int64_t days);
    Date timeWindowCutoff(Date at) const;
    struct TimeWindowOption {
        std::string_view range;
        std::string label;
    };
    std::vector<TimeWindowOption> timeWindowOptions() const;

    const std::string& search() const { return place.search; }
    void setSearch(std::string search);

    WorkspaceDestination workspace() const { return place.workspace; }
    const std::set<WorkspaceDestination>& systemFilters() const { return place.systemFilters; }
    const std::set<EventCategory>& categoryFilters() const { return place.categoryFilters; }
    const std::optional<SidebarDestination>& navigation() const { return destination; }
    void setNavigation(std::optional<SidebarDestination> next);
    void navigate(WorkspaceDestination to, bool clearSearch);
    /// Adds a place to what narrows the timeline, or takes it out. A place that is no such filter
    /// is gone to.
    void toggleSystemFilter(WorkspaceDestination filter);
    /// Goes to where the event is shown, and selects it.
    void openEvent(Shared<Event> event);

    // The open named snapshot.

    const std::optional<Uuid>& activeBaselineID() const { return baselineID; }
    /// Null when none is open.
    const Baseline* selectedBaseline() const;
    SnapshotViewMode snapshotViewMode() const { return viewMode; }
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
    void followSettings();
    void takeSources();
    void setHistory(MergedHistory history);

    void refresh();
    void show(std::optional<Date> since, std::optional<Events> stateComparison);
    void dropVanishedSelection();
    QCoro::Task<void> compare(Baseline baseline, Shared<Snapshot> latest, std::stop_token stop);

    void takeRange(std::string range);
    bool changeRange(std::string range);
    bool applyNavigation(std::optional<SidebarDestination> next);
    void moveTo(WorkspaceDestination to, bool clearSearch);

    ModelState& state;
    const ModelServices& services;

    Events journalEvents;
    Events activityEvents;
    std::uint64_t journalRevision = 0;
    std::uint64_t activityRevision = 0;
    MemoryEventList memory;
    std::shared_ptr<const MergedHistory> merged = std::make_shared<const MergedHistory>();
    std::uint64_t merges = 0;

    /// The snapshot in it is filled in by each refresh.
    HistoryPlace place;
    std::string rangeText;
    std::optional<SidebarDestination> destination;
    RecordingMode recordingMode;

    std::optional<Uuid> baselineID;
    SnapshotViewMode viewMode = SnapshotViewMode::timeline;
    /// The last mode of each snapshot.
    std::map<Uuid, SnapshotViewMode> snapshotModes;
    /// What comparing the states of each snapshot with the latest one gave.
    std::map<Uuid, Events> baselineEvents;
    std::stop_source comparison{std::nostopstate};
    bool comparing = false;

    HistoryView view;
    std::optional<HistoryExport> report;
    std::uint64_t refreshes = 0;
    OptionalShared<Event> selectedEvent;
    Uuid scrollRequest = Uuid::random();
};

} // namespace tidemark
