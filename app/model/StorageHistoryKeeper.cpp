#include "app/model/StorageHistoryKeeper.h"

#include "app/base/Background.h"
#include "app/model/Log.h"

#include <utility>

namespace tidemark {

StorageHistoryKeeper::StorageHistoryKeeper(ModelState& state, const DataFiles& files,
                                           FolderGuard guard, const TaskScope& tasks)
    : state(state), document(files.storageHistory()), store(document, std::move(guard)),
      tasks(tasks) {
    connect(&state, &ModelState::changed, this, &StorageHistoryKeeper::followState);
}

QCoro::Task<void> StorageHistoryKeeper::open() {
    const auto hold = tasks.hold();
    const auto read = [file = document](const std::stop_token&) {
        return StorageHistoryStore::read(file).value_or(StorageHistory());
    };
    try {
        StorageHistory stored = co_await runInBackground(read, {}, WorkPriority::utility, &thread);
        show(std::move(stored));
        isOpen = true;
    } catch (const std::exception& error) {
        setProblem(error.what());
    }
    recordedCaptures = state.keptCaptures();
    co_await catchUp();
}

void StorageHistoryKeeper::followState() {
    // The event loop may run once more while the controller is being destroyed; no task can be
    // started then. What is missing is added when the program runs next.
    if (state.isEnding)
        return;
    if (std::exchange(recordedCaptures, state.keptCaptures()) != state.keptCaptures())
        tasks.start(catchUp());
}

/// Adds the snapshots that are not in the document yet, one save at a time.
QCoro::Task<void> StorageHistoryKeeper::catchUp() {
    const auto hold = tasks.hold();
    isBehind = true;
    if (!isOpen || std::exchange(isSaving, true))
        co_return;
    while (std::exchange(isBehind, false))
        co_await save();
    isSaving = false;
}

QCoro::Task<void> StorageHistoryKeeper::save() {
    const auto add = [this, known = current, journal = state.journal()](const std::stop_token&) {
        StorageHistory next = *known;
        const bool isChanged = next.catchUp(journal->snapshots, Calendar());
        if (isChanged)
            store.save(next);
        return isChanged ? std::optional(std::move(next)) : std::nullopt;
    };
    try {
        std::optional<StorageHistory> saved =
            co_await runInBackground(add, {}, WorkPriority::utility, &thread);
        setProblem(std::nullopt);
        if (saved)
            show(*std::move(saved));
    } catch (const std::exception& error) {
        // The next capture tries again.
        setProblem(error.what());
    }
}

void StorageHistoryKeeper::show(StorageHistory history) {
    current = Shared(std::move(history));
    ++revisions;
    noteChange();
}

void StorageHistoryKeeper::setProblem(std::optional<std::string> problem) {
    if (problem)
        qCCritical(capturesLog, "Daily sizes: %s", problem->c_str());
    if (problem == failure)
        return;
    failure = std::move(problem);
    noteChange();
}

} // namespace tidemark
