#include "app/model/HistoryScreen.h"

#include "app/base/Background.h"
#include "app/model/Log.h"
#include "app/preferences/FollowSettings.h"
#include "core/activity/ActivityEventBuilder.h"
#include "core/timeline/EventBuilder.h"

#include <algorithm>
#include <utility>

namespace tidemark {

namespace {

HistoryScreen::Events differences(const Snapshot& before, const Snapshot& after) {
    std::vector<Event> events = EventBuilder::build(before, after);
    return TimelinePresentation::newestFirst(
        {std::make_move_iterator(events.begin()), std::make_move_iterator(events.end())});
}

} // namespace

HistoryScreen::HistoryScreen(ModelState& shared, const ModelServices& used)
    : state(shared), services(used), recordingMode(shared.recordingMode) {
    place.customWindowDays = read(services.preferences, preference::historyCustomWindowDays);
    takeRange(read(services.preferences, preference::historyTimeWindow));
    connect(&state, &ModelState::changed, this, &HistoryScreen::followState);
    followSettings();
}

// The sources.

void HistoryScreen::followState() {
    const bool isOtherMode =
        std::exchange(recordingMode, *state.recordingMode) != *state.recordingMode;
    const bool isStale =
        journalRevision != state.journalRevision() || activityRevision != state.activityRevision();
    if (isOtherMode || isStale)
        refreshPresentation();
}

void HistoryScreen::followSettings() {
    const auto& preferences = services.preferences;
    // What this screen stored itself may be read as another value, where it is none of the choices.
    const auto takeWindow = [this, &preferences] {
        if (preferences.text(preference::historyTimeWindow.name) != rangeText)
            setRange(read(preferences, preference::historyTimeWindow));
    };
    const auto takeDays = [this, &preferences] {
        if (preferences.integer(preference::historyCustomWindowDays.name) != place.customWindowDays)
            setCustomWindowDays(read(preferences, preference::historyCustomWindowDays));
    };
    tidemark::followSettings(preferences, this, takeWindow, preference::historyTimeWindow);
    tidemark::followSettings(preferences, this, takeDays, preference::historyCustomWindowDays);
}

/// Merges anew when the journal or the activity became another.
void HistoryScreen::takeSources() {
    const bool isNewJournal =
        std::exchange(journalRevision, state.journalRevision()) != state.journalRevision();
    const bool isNewActivity =
        std::exchange(activityRevision, state.activityRevision()) != state.activityRevision();
    if (isNewJournal) {
        journalEvents = state.journal().events;
        std::ranges::move(state.journal().installationEvents(), std::back_inserter(journalEvents));
        baselineEvents.clear();
    }
    if (isNewActivity)
        activityEvents = ActivityEventBuilder::build(state.systemActivity());
    if (!isNewJournal && !isNewActivity)
        return;
    Events all = memory.events();
    all.reserve(all.size() + journalEvents.size() + activityEvents.size());
    for (const Events* source : {&journalEvents, &activityEvents})
        all.insert(all.end(), source->begin(), source->end());
    setHistory(MergedHistory::of(std::move(all)));
}

void HistoryScreen::setMemory(const MemoryArchive& archive) {
    MemoryEventList::Change change = memory.update(archive.records);
    if (change.isEmpty())
        return;
    const bool mayBeSelected = selectedEvent && !change.added.empty();
    const auto appears = [this](const Shared<Event>& event) { return mayAppear(place, *event); };
    const bool isShown =
        std::ranges::any_of(change.added, appears) || std::ranges::any_of(change.removed, appears);
    setHistory(merged->changed(std::move(change.removed), std::move(change.added)));
    if (isShown)
        refresh();
    else
        recountMemory(view, *merged, place, services.clock.now());
    if (mayBeSelected) {
        const auto isSelected = [this](const Shared<Event>& event) {
            return event->id == selectedEvent->id;
        };
        if (const auto found = std::ranges::find_if(merged->full, isSelected);
            found != merged->full.end())
            selectedEvent = *found;
    }
    noteChange();
}

void HistoryScreen::setHistory(MergedHistory history) {
    merged = std::make_shared<const MergedHistory>(std::move(history));
    ++merges;
}

// What is to be seen.

void HistoryScreen::refreshPresentation() {
    refresh();
    noteChange();
}

void HistoryScreen::refresh() {
    takeSources();
    comparison.request_stop();
    ++refreshes;
    comparing = false;
    const Baseline* baseline = selectedBaseline();
    if (!baseline || !state.latest())
        return show(std::nullopt, std::nullopt);
    if (viewMode == SnapshotViewMode::timeline)
        return show(baseline->snapshot->timestamp, std::nullopt);
    if (const auto known = baselineEvents.find(baseline->id); known != baselineEvents.end())
        return show(std::nullopt, known->second);
    comparing = true;
    view.presentation = {};
    comparison = std::stop_source();
    services.tasks.start(
        compare(*baseline, state.journal().snapshots.back(), comparison.get_token()));
}

void HistoryScreen::show(std::optional<Date> since, std::optional<Events> stateComparison) {
    place.isInSnapshot = baselineID.has_value();
    place.since = since;
    place.stateComparison = std::move(stateComparison);
    view = presentHistory(*merged, place, services.clock.now(), Calendar());
}

QCoro::Task<void> HistoryScreen::compare(Baseline baseline, Shared<Snapshot> latest,
                                         std::stop_token stop) {
    const auto hold = services.tasks.hold();
    const auto revision = refreshes;
    const auto build = [before = baseline.snapshot, latest](const std::stop_token&) {
        return differences(*before, *latest);
    };
    std::optional<Events> events;
    try {
        Events found = co_await runInBackground(build, stop, WorkPriority::userInitiated);
        events = std::move(found);
    } catch (const std::exception& error) {
        qCCritical(capturesLog, "The comparison failed: %s", error.what());
    }
    if (stop.stop_requested() || services.tasks.isStopping() || revision != refreshes)
        co_return;
    comparing = false;
    if (events) {
        baselineEvents[baseline.id] = *events;
        ++refreshes;
        show(std::nullopt, *std::move(events));
    }
    noteChange();
}

void HistoryScreen::setSelected(OptionalShared<Event> event) {
    if (event == selectedEvent)
        return;
    selectedEvent = std::move(event);
    noteChange();
}

void HistoryScreen::dropVanishedSelection() {
    const auto isSelected = [this](const Shared<Event>& event) {
        return event->id == selectedEvent->id;
    };
    if (selectedEvent && std::ranges::none_of(view.presentation.events, isSelected))
        selectedEvent = {};
}

ObservationCoverageReport HistoryScreen::observationCoverage() const {
    const Baseline* baseline = selectedBaseline();
    const Date now = state.observationNow;
    return ObservationCoverageReport::build(
        state.journal().snapshots, baseline ? baseline->snapshot->timestamp : timeWindowCutoff(now),
        now);
}

void HistoryScreen::beginExport() {
    if (comparing || view.presentation.events.empty())
        return;
    const auto mode = isStateComparison() ? SnapshotViewMode::states : SnapshotViewMode::timeline;
    report =
        HistoryExport{view.presentation.events, std::string(rawValue(mode)), services.clock.now()};
    noteChange();
}

void HistoryScreen::endExport() {
    report.reset();
    noteChange();
}

// Where the user stands.

void HistoryScreen::takeRange(std::string range) {
    rangeText = std::move(range);
    place.window =
        json::fromRawValue<HistoryTimeWindow>(rangeText).value_or(HistoryTimeWindow::all);
}

bool HistoryScreen::changeRange(std::string range) {
    if (range == rangeText)
        return false;
    takeRange(std::move(range));
    services.preferences.set(preference::historyTimeWindow.name, rangeText);
    return true;
}

void HistoryScreen::setRange(std::string range) {
    if (!changeRange(std::move(range)))
        return;
    refresh();
    dropVanishedSelection();
    noteChange();
}

void HistoryScreen::setCustomWindowDays(std::int64_t days) {
    if (days == place.customWindowDays)
        return;
    place.customWindowDays = days;
    services.preferences.set(preference::historyCustomWindowDays.name, days);
    if (place.window == HistoryTimeWindow::custom)
        refresh();
    dropVanishedSelection();
    noteChange();
}

Date HistoryScreen::timeWindowCutoff(Date at) const {
    return cutoff(place.window, at, place.customWindowDays);
}

std::vector<HistoryScreen::TimeWindowOption> HistoryScreen::timeWindowOptions() const {
    std::vector<TimeWindowOption> options;
    for (const auto& [window, range] : json::rawValues<HistoryTimeWindow>)
        options.push_back({range, label(window, place.customWindowDays)});
    return options;
}

void HistoryScreen::setSearch(std::string search) {
    if (search == place.search)
        return;
    place.search = std::move(search);
    refreshPresentation();
}

bool HistoryScreen::applyNavigation(std::optional<SidebarDestination> next) {
    if (next == destination)
        return false;
    destination = std::move(next);
    selectedEvent = {};
    baselineID = std::nullopt;
    place.categoryFilters.clear();
    const auto to = destination.value_or(sidebar::Timeline());
    if (const auto* one = std::get_if<sidebar::Category>(&to)) {
        place.categoryFilters = {one->category};
    } else if (const auto* several = std::get_if<sidebar::Categories>(&to)) {
        place.categoryFilters = several->categories;
    } else if (const auto* baseline = std::get_if<sidebar::OfBaseline>(&to)) {
        baselineID = baseline->id;
        const auto mode = snapshotModes.find(baseline->id);
        viewMode = mode == snapshotModes.end() ? SnapshotViewMode::timeline : mode->second;
    } else {
        viewMode = SnapshotViewMode::timeline;
    }
    return true;
}

void HistoryScreen::setNavigation(std::optional<SidebarDestination> next) {
    if (applyNavigation(std::move(next)))
        refreshPresentation();
}

void HistoryScreen::moveTo(WorkspaceDestination to, bool clearSearch) {
    place.systemFilters.clear();
    if (facts(to).isSystemFilter)
        place.systemFilters = {to};
    place.workspace = to;
    applyNavigation(sidebar::Timeline());
    selectedEvent = {};
    if (clearSearch)
        place.search.clear();
    if (facts(to).category)
        applyNavigation(sidebar::Category{*facts(to).category});
}

void HistoryScreen::navigate(WorkspaceDestination to, bool clearSearch) {
    moveTo(to, clearSearch);
    refreshPresentation();
}

void HistoryScreen::toggleSystemFilter(WorkspaceDestination filter) {
    if (!facts(filter).isSystemFilter)
        return navigate(filter, true);
    auto filters = place.systemFilters;
    if (filters.erase(filter) == 0)
        filters.insert(filter);
    if (filters.empty())
        return navigate(WorkspaceDestination::timeline, false);
    // A place that was gone to filters by its category as well, which would hide all others.
    if (destination && std::holds_alternative<sidebar::Category>(*destination))
        applyNavigation(sidebar::Timeline());
    place.workspace = filters.size() == 1 ? *filters.begin() : WorkspaceDestination::timeline;
    place.systemFilters = std::move(filters);
    refreshPresentation();
}

void HistoryScreen::openEvent(Shared<Event> event) {
    moveTo(homeOf(*event), true);
    // So that the event is sure to be in the list.
    changeRange(std::string(rawValue(HistoryTimeWindow::all)));
    selectedEvent = std::move(event);
    scrollRequest = Uuid::random();
    refreshPresentation();
}

// The open named snapshot.

const Baseline* HistoryScreen::selectedBaseline() const {
    const auto& baselines = state.journal().baselines;
    if (!baselineID)
        return nullptr;
    const auto found = std::ranges::find(baselines, *baselineID, &Baseline::id);
    return found == baselines.end() ? nullptr : &*found;
}

void HistoryScreen::setSnapshotViewMode(SnapshotViewMode mode) {
    if (mode == viewMode)
        return;
    viewMode = mode;
    if (baselineID)
        snapshotModes[*baselineID] = mode;
    selectedEvent = {};
    refreshPresentation();
}

bool HistoryScreen::isStateComparison() const {
    return viewMode == SnapshotViewMode::states && selectedBaseline();
}

bool HistoryScreen::hasIncompleteSnapshotHistory() const {
    const Baseline* baseline = selectedBaseline();
    if (!baseline || isStateComparison())
        return false;
    return state.journal().mayLackEventsSince(baseline->snapshot->timestamp);
}

void HistoryScreen::openSnapshot(const Uuid& id) {
    const auto& baselines = state.journal().baselines;
    if (std::ranges::find(baselines, id, &Baseline::id) == baselines.end())
        return;
    moveTo(WorkspaceDestination::snapshots, true);
    applyNavigation(sidebar::OfBaseline{id});
    refreshPresentation();
}

void HistoryScreen::forgetSnapshot(const Uuid& id) {
    snapshotModes.erase(id);
    if (baselineID == id)
        navigate(WorkspaceDestination::timeline, false);
}

void HistoryScreen::showImported() {
    changeRange(std::string(rawValue(HistoryTimeWindow::week)));
    applyNavigation(sidebar::Timeline());
    place.search.clear();
    selectedEvent = {};
    refreshPresentation();
}

void HistoryScreen::showSaved(const Uuid& id) {
    place.workspace = WorkspaceDestination::snapshots;
    applyNavigation(sidebar::OfBaseline{id});
    selectedEvent = {};
    refreshPresentation();
}

} // namespace tidemark
