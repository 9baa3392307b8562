#include "app/model/NamedSnapshots.h"

#include "app/preferences/PreferenceKeys.h"
#include "core/base/Characters.h"
#include "core/base/Text.h"

#include <algorithm>

namespace tidemark {

QCoro::Task<void> NamedSnapshots::beginSavedSnapshot() {
    const auto hold = services.tasks.hold();
    if (!state.canRecord() || state.busy())
        co_return;
    state.saveSnapshotPresented = true;
    co_await prepareSnapshotDraft();
}

bool NamedSnapshots::mayPrepare() const {
    return state.canRecord() && state.loaded && state.saveSnapshotPresented
           && !state.isPreparingSnapshot && !state.isScanning && !state.isSaving && !state.isEnding;
}

QCoro::Task<void> NamedSnapshots::prepareSnapshotDraft() {
    const auto hold = services.tasks.hold();
    if (!mayPrepare())
        co_return;
    state.isPreparingSnapshot = true;
    snapshotDraft = {};
    snapshotError = std::nullopt;
    OptionalShared<Snapshot> draft;
    std::string failure;
    try {
        Snapshot snapshot = co_await flow.captureObservation();
        draft.emplace(std::move(snapshot));
    } catch (const std::exception& error) {
        failure = error.what();
    }
    // A capture that the end of the program cut short is not whole.
    const bool isWanted = state.saveSnapshotPresented && !state.isEnding;
    if (isWanted && draft && state.canRecord())
        snapshotDraft = std::move(draft);
    else if (isWanted && !draft)
        snapshotError = "Couldn’t capture a fresh snapshot. " + failure;
    state.isPreparingSnapshot = false;
}

bool NamedSnapshots::maySave(std::string_view name) const {
    return state.canRecord() && state.loaded && state.saveSnapshotPresented
           && !state.isPreparingSnapshot && !state.isSaving && !state.isEnding && *snapshotDraft
           && !name.empty();
}

QCoro::Task<bool> NamedSnapshots::saveNamedSnapshot(std::string name) {
    const auto hold = services.tasks.hold();
    const std::string_view kept = trimmed(name);
    if (!maySave(kept))
        co_return false;
    state.isSaving = true;
    snapshotError = std::nullopt;
    const auto& baselineKey = preference::needsRecordingBaseline;
    Journal next = state.journal();
    next.append(snapshotDraft->value(), !read(services.preferences, baselineKey));
    next.baselines.push_back(
        Baseline::named(std::string(firstCharacters(kept, longestName)), next.snapshots.back()));
    const Uuid id = next.baselines.back().id;
    std::string failure;
    bool saved = false;
    try {
        co_await flow.save(&next);
        saved = true;
    } catch (const std::exception& error) {
        failure = error.what();
    }
    if (!saved) {
        snapshotError = "The snapshot couldn’t be saved. " + failure;
        state.isSaving = false;
        co_return false;
    }
    state.setJournal(std::move(next));
    services.preferences.set(baselineKey.name, false);
    screen.showSaved(id);
    snapshotDraft = {};
    state.saveSnapshotPresented = false;
    state.isSaving = false;
    co_return true;
}

void NamedSnapshots::cancelSavedSnapshot() {
    state.saveSnapshotPresented = false;
    snapshotDraft = {};
    snapshotError = std::nullopt;
}

QCoro::Task<bool> NamedSnapshots::deleteSnapshot(Uuid id) {
    const auto hold = services.tasks.hold();
    Journal next = state.journal();
    const auto removed =
        std::erase_if(next.baselines, [&](const Baseline& baseline) { return baseline.id == id; });
    if (removed == 0 || state.busy())
        co_return false;
    const bool saved = co_await flow.commit(std::move(next));
    if (saved)
        screen.forgetSnapshot(id);
    co_return saved;
}

} // namespace tidemark
