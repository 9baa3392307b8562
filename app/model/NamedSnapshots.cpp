#include "app/model/NamedSnapshots.h"

#include "app/preferences/PreferenceKeys.h"
#include "core/base/Characters.h"
#include "core/base/Text.h"

#include <algorithm>

namespace tidemark {

QCoro::Task<void> NamedSnapshots::beginSavedSnapshot() {
    const auto hold = used.tasks.hold();
    if (!used.state.canRecord())
        co_return;
    auto begun = used.state.operations().begin(Operation::naming);
    if (!begun)
        co_return;
    naming = std::move(begun);
    co_await prepareSnapshotDraft();
}

QCoro::Task<void> NamedSnapshots::prepareSnapshotDraft() {
    const auto hold = used.tasks.hold();
    if (!isNaming())
        co_return;
    const auto drafting = used.state.operations().begin(Operation::drafting);
    if (!drafting)
        co_return;
    snapshotDraft = {};
    snapshotError = std::nullopt;
    OptionalShared<Snapshot> draft;
    std::string failure;
    try {
        Snapshot snapshot = co_await used.observations.take();
        draft.emplace(std::move(snapshot));
    } catch (const std::exception& error) {
        failure = error.what();
    }
    // A capture that was stopped at the end of the program is incomplete.
    const bool isWanted = naming && !used.state.isEnding;
    if (isWanted && draft && used.state.canRecord())
        snapshotDraft = std::move(draft);
    else if (isWanted && !draft)
        snapshotError = "Couldn’t capture a fresh snapshot. " + failure;
}

QCoro::Task<bool> NamedSnapshots::saveNamedSnapshot(std::string name) {
    const auto hold = used.tasks.hold();
    const std::string_view kept = trimmed(name);
    if (!isNaming() || !*snapshotDraft || kept.empty())
        co_return false;
    const auto saving = used.state.operations().begin(Operation::savingDraft);
    if (!saving)
        co_return false;
    snapshotError = std::nullopt;
    const auto& baselineKey = preferenceKeys::needsRecordingBaseline;
    Journal next = *used.state.journal();
    std::optional<Uuid> id;
    std::string failure;
    try {
        next.append(snapshotDraft->value(), !read(used.preferences, baselineKey));
        next.baselines.push_back(Baseline::named(std::string(firstCharacters(kept, longestName)),
                                                 next.snapshots.back()));
        co_await used.file.save(&next);
        id = next.baselines.back().id;
    } catch (const std::exception& error) {
        failure = error.what();
    }
    if (!id) {
        snapshotError = "The snapshot couldn’t be saved. " + failure;
        co_return false;
    }
    used.state.setJournal(std::move(next));
    used.preferences.note(baselineKey.name, false);
    used.screen.showSaved(*id);
    snapshotDraft = {};
    naming.reset();
    co_return true;
}

void NamedSnapshots::cancelSavedSnapshot() {
    naming.reset();
    snapshotDraft = {};
    snapshotError = std::nullopt;
}

QCoro::Task<bool> NamedSnapshots::deleteSnapshot(Uuid id) {
    const auto hold = used.tasks.hold();
    Journal next = *used.state.journal();
    const auto removed =
        std::erase_if(next.baselines, [&](const Baseline& baseline) { return baseline.id == id; });
    if (removed == 0)
        co_return false;
    const bool saved = co_await used.flow.commit(std::move(next));
    if (saved)
        used.screen.forgetSnapshot(id);
    co_return saved;
}

} // namespace tidemark
