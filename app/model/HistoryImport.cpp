#include "app/model/HistoryImport.h"

#include "app/base/Background.h"
#include "app/model/ImportView.h"

#include <QScopeGuard>

namespace tidemark {

bool HistoryImport::needsInitialHistory() const {
    const Journal& journal = *state.journal();
    const bool hasImported =
        journal.importedInstallations && !journal.importedInstallations->empty();
    return state.canRecord() && !state.isEnding && !journal.initialHistoryImportCompletedAt
           && journal.snapshots.empty() && journal.events.empty() && journal.baselines.empty()
           && !hasImported;
}

QCoro::Task<InstallationPreview> HistoryImport::collected() {
    const auto read = [collect = collect, now = services.clock.now()](const std::stop_token&) {
        return collect(now);
    };
    InstallationPreview preview = co_await runInBackground(read);
    co_return preview;
}

QCoro::Task<void> HistoryImport::importInitialHistoryIfNeeded() {
    const auto hold = services.tasks.hold();
    if (!needsInitialHistory())
        co_return;
    const auto importing = state.operations().begin(Operation::importing);
    if (!importing)
        co_return;
    isImportingInitialHistory = true;
    const auto done = qScopeGuard([this] { isImportingInitialHistory = false; });
    try {
        co_await fillJournal();
    } catch (const std::exception&) {
        initialHistoryMessage = std::string(importText::initialFailure);
    }
}

QCoro::Task<void> HistoryImport::fillJournal() {
    InstallationPreview preview = co_await collected();
    if (!state.canRecord() || state.isEnding)
        co_return;
    std::erase_if(preview.records, [](const auto& record) { return record.isRoutine(); });
    Journal next = *state.journal();
    const std::size_t added = next.importInstallations(preview.records);
    next.initialHistoryImportCompletedAt = services.clock.now();
    co_await flow.save(&next);
    state.setJournal(std::move(next));
    initialHistoryMessage = importText::initialSuccess(added);
}

QCoro::Task<bool> HistoryImport::previewImport() {
    const auto hold = services.tasks.hold();
    if (!state.canRecord())
        co_return false;
    const auto importing = state.operations().begin(Operation::importing);
    if (!importing)
        co_return false;
    importPresented = true;
    importPreview = std::nullopt;
    importError = std::nullopt;
    try {
        InstallationPreview preview = co_await collected();
        importPreview = std::move(preview);
    } catch (const std::exception& error) {
        importError = error.what();
    }
    co_return true;
}

QCoro::Task<std::optional<std::size_t>>
HistoryImport::importHistory(std::vector<InstallationRecord> records) {
    const auto hold = services.tasks.hold();
    if (!state.canRecord() || !state.mayBegin(Operation::saving))
        co_return std::nullopt;
    Journal next = *state.journal();
    const std::size_t added = next.importInstallations(records);
    if (added > 0 && !next.initialHistoryImportCompletedAt)
        next.initialHistoryImportCompletedAt = services.clock.now();
    const bool saved = co_await flow.commit(std::move(next));
    if (!saved)
        co_return std::nullopt;
    if (showImported)
        showImported();
    importPresented = false;
    co_return added;
}

std::set<std::string> HistoryImport::importedIDs() const {
    std::set<std::string> ids;
    if (const auto& records = state.journal()->importedInstallations)
        for (const InstallationRecord& record : *records)
            ids.insert(record.id());
    return ids;
}

} // namespace tidemark
