#include "app/model/HistoryScreen.h"

#include "app/preferences/FollowSettings.h"

#include <algorithm>
#include <utility>

namespace tidemark {

HistoryScreen::HistoryScreen(ModelState& state, Preferences& preferences, AppClock& clock,
                             const TaskScope& tasks, bool isMerging)
    : state(state), preferences(preferences), clock(clock), isMerging(isMerging),
      comparisons(tasks, [this](auto differences) { showCompared(std::move(differences)); }),
      recordingMode(state.recordingMode) {
    navigation.setCustomWindowDays(read(preferences, preferenceKeys::historyCustomWindowDays));
    navigation.setRange(read(preferences, preferenceKeys::historyTimeWindow));
    connect(&state, &ModelState::changed, this, &HistoryScreen::followState);
    followPreferences();
}

void HistoryScreen::followState() {
    const bool isOtherMode =
        std::exchange(recordingMode, *state.recordingMode) != *state.recordingMode;
    if (isMerging && (isOtherMode || merge.isStale(state)))
        refreshPresentation();
}

void HistoryScreen::followPreferences() {
    // Compares the stored values themselves, because `read` returns another one for a value that is
    // not allowed.
    const auto takeWindow = [this] {
        if (preferences.text(preferenceKeys::historyTimeWindow.name) != navigation.range())
            setRange(read(preferences, preferenceKeys::historyTimeWindow));
    };
    const auto takeDays = [this] {
        if (preferences.integer(preferenceKeys::historyCustomWindowDays.name)
            != navigation.customWindowDays())
            setCustomWindowDays(read(preferences, preferenceKeys::historyCustomWindowDays));
    };
    followSettings(preferences, this, takeWindow, preferenceKeys::historyTimeWindow);
    followSettings(preferences, this, takeDays, preferenceKeys::historyCustomWindowDays);
}

void HistoryScreen::setMemory(const MemoryArchive& archive) {
    if (!isMerging)
        return;
    const auto change = merge.update(archive);
    if (change.isEmpty())
        return;
    shown.update(*history(), change, clock.now());
    if (!change.added.empty())
        selected.takeNewerForm(history()->full);
    noteChange();
}

// The presentation.

void HistoryScreen::refreshPresentation() {
    refresh();
    noteChange();
}

void HistoryScreen::refresh() {
    if (!isMerging)
        return;
    merge.update(state);
    if (const auto compared = comparedCaptures())
        return showDifferences(compared->from.snapshot, compared->to.snapshot);
    const auto opened = openBaseline();
    const auto latest = state.latest();
    if (opened && latest && navigation.viewMode() == SnapshotViewMode::states)
        return showDifferences(opened->snapshot, latest.value());
    comparisons.abandon();
    show(latest ? opened : std::nullopt, std::nullopt);
}

/// Shows the differences of two snapshots, and nothing until they are known.
void HistoryScreen::showDifferences(const Shared<Snapshot>& before, const Shared<Snapshot>& after) {
    if (auto differences = comparisons.known(before, after))
        show(std::nullopt, std::move(differences));
    else
        shown.showNothing();
}

void HistoryScreen::show(const std::optional<Baseline>& since, std::optional<Events> differences) {
    HistoryPlace place = navigation.place();
    place.isInSnapshot = navigation.snapshot().has_value() || navigation.isComparison();
    if (since)
        place.since = since->snapshot->timestamp;
    place.stateComparison = std::move(differences);
    shown.show(*history(), std::move(place), clock.now());
}

void HistoryScreen::showCompared(std::optional<Events> differences) {
    if (differences)
        show(std::nullopt, std::move(differences));
    noteChange();
}

void HistoryScreen::setSelected(OptionalShared<Event> event) {
    if (selected.select(std::move(event)))
        noteChange();
}

ObservationCoverageReport HistoryScreen::observationCoverage() const {
    const auto opened = openBaseline();
    // `observationNow` may be the time at which the newest capture began; its snapshot is dated by
    // its end.
    const Date began = state.observationNow;
    const Date now = std::max(began, state.lastCapture().value_or(began));
    return ObservationCoverageReport::build(
        state.journal()->snapshots,
        opened ? opened->snapshot->timestamp : navigation.timeWindowCutoff(now), now);
}

void HistoryScreen::beginExport() {
    // Nothing is shown while states are being compared.
    if (presentation().events.empty())
        return;
    const auto mode = isStateComparison() ? SnapshotViewMode::states : SnapshotViewMode::timeline;
    report = HistoryExport{presentation().events, std::string(rawValue(mode)), clock.now()};
    noteChange();
}

void HistoryScreen::endExport() {
    report.reset();
    noteChange();
}

// The user's place.

void HistoryScreen::changeRange(std::string range) {
    if (navigation.setRange(std::move(range)))
        preferences.set(preferenceKeys::historyTimeWindow.name, navigation.range());
}

void HistoryScreen::setRange(std::string range) {
    if (range == navigation.range())
        return;
    changeRange(std::move(range));
    refresh();
    selected.keepIfIn(presentation().events);
    noteChange();
}

void HistoryScreen::setCustomWindowDays(std::int64_t days) {
    if (!navigation.setCustomWindowDays(days))
        return;
    preferences.set(preferenceKeys::historyCustomWindowDays.name, days);
    if (navigation.place().window == HistoryTimeWindow::custom)
        refresh();
    selected.keepIfIn(presentation().events);
    noteChange();
}

void HistoryScreen::setSearch(std::string search) {
    if (navigation.setSearch(std::move(search)))
        refreshPresentation();
}

void HistoryScreen::setNavigation(std::optional<SidebarDestination> next) {
    if (!navigation.go(std::move(next)))
        return;
    selected.clear();
    refreshPresentation();
}

void HistoryScreen::navigate(WorkspaceDestination to, bool clearSearch) {
    navigation.go(to, clearSearch);
    selected.clear();
    refreshPresentation();
}

void HistoryScreen::toggleSystemFilter(WorkspaceDestination filter) {
    if (navigation.toggleFilter(filter))
        selected.clear();
    refreshPresentation();
}

void HistoryScreen::openEvent(const Shared<Event>& event) {
    navigation.go(homeOf(*event), true);
    // Shows the whole history, so that the event is in the list.
    changeRange(std::string(rawValue(HistoryTimeWindow::all)));
    selected.select(event);
    selected.requestScroll();
    refreshPresentation();
}

// The open named snapshot.

std::optional<Baseline> HistoryScreen::baseline(const std::optional<Uuid>& id) const {
    const auto journal = state.journal();
    const auto found = std::ranges::find_if(journal->baselines,
                                            [&](const Baseline& each) { return each.id == id; });
    return found == journal->baselines.end() ? std::nullopt : std::optional(*found);
}

std::optional<Baseline> HistoryScreen::openBaseline() const {
    return baseline(navigation.snapshot());
}

void HistoryScreen::setSnapshotViewMode(SnapshotViewMode mode) {
    if (!navigation.setViewMode(mode))
        return;
    selected.clear();
    refreshPresentation();
}

bool HistoryScreen::isStateComparison() const {
    return navigation.isComparison()
           || (navigation.viewMode() == SnapshotViewMode::states && openBaseline());
}

bool HistoryScreen::hasIncompleteSnapshotHistory() const {
    const auto opened = openBaseline();
    return opened && !isStateComparison()
           && state.journal()->mayLackEventsSince(opened->snapshot->timestamp);
}

void HistoryScreen::openSnapshot(const Uuid& id) {
    if (!baseline(id))
        return;
    navigation.go(WorkspaceDestination::snapshots, true);
    navigation.goToSnapshot(id);
    selected.clear();
    refreshPresentation();
}

void HistoryScreen::forgetSnapshot(const Uuid& id) {
    navigation.forget(id);
    if (navigation.snapshot() == id)
        navigate(WorkspaceDestination::timeline, false);
}

void HistoryScreen::compareCaptures(CapturePair chosen) {
    pair = std::move(chosen);
    navigation.goToComparison(pair->from.snapshot->id, pair->to.snapshot->id);
    selected.clear();
    refreshPresentation();
}

std::optional<CapturePair> HistoryScreen::comparedCaptures() const {
    return navigation.isComparison() ? pair : std::nullopt;
}

void HistoryScreen::showImported() {
    changeRange(std::string(rawValue(HistoryTimeWindow::week)));
    navigation.go(sidebarDestination::Timeline());
    navigation.setSearch({});
    selected.clear();
    refreshPresentation();
}

void HistoryScreen::showSaved(const Uuid& id) {
    navigation.goToSnapshot(id);
    selected.clear();
    refreshPresentation();
}

} // namespace tidemark
