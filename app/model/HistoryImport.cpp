#include "app/model/HistoryImport.h"

#include "app/base/Background.h"
#include "app/model/ImportView.h"

#include <QScopeGuard>

namespace tidemark {

bool HistoryImport::needsInitialHistory() const {
    const Journal& journal = *used.state.journal();
    const bool hasImported =
        journal.importedInstallations && !journal.importedInstallations->empty();
    return used.state.canRecord() && !used.state.isEnding
           && !journal.initialHistoryImportCompletedAt && journal.snapshots.empty()
           && journal.events.empty() && journal.baselines.empty() && !hasImported;
}

QCoro::Task<InstallationPreview> HistoryImport::collected() {
    const auto read = [collect = used.collect, now = used.clock.now()](const std::stop_token&) {
        return collect(now);
    };
    InstallationPreview preview = co_await runInBackground(read);
    co_return preview;
}

QCoro::Task<void> HistoryImport::importInitialHistoryIfNeeded() {
    const auto hold = used.tasks.hold();
    if (!needsInitialHistory())
        co_return;
    const auto importing = used.state.operations().begin(Operation::importing);
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
    if (!used.state.canRecord() || used.state.isEnding)
        co_return;
    std::erase_if(preview.records, [](const auto& record) { return record.isRoutine(); });
    Journal next = *used.state.journal();
    const std::size_t added = next.importInstallations(preview.records);
    next.initialHistoryImportCompletedAt = used.clock.now();
    co_await used.file.save(&next);
    used.state.setJournal(std::move(next));
    initialHistoryMessage = importText::initialSuccess(added);
}

QCoro::Task<bool> HistoryImport::previewImport() {
    const auto hold = used.tasks.hold();
    if (!used.state.canRecord())
        co_return false;
    const auto importing = used.state.operations().begin(Operation::importing);
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
    const auto hold = used.tasks.hold();
    if (!used.state.canRecord() || !used.state.mayBegin(Operation::saving))
        co_return std::nullopt;
    Journal next = *used.state.journal();
    const std::size_t added = next.importInstallations(records);
    if (added > 0 && !next.initialHistoryImportCompletedAt)
        next.initialHistoryImportCompletedAt = used.clock.now();
    const bool saved = co_await used.flow.commit(std::move(next));
    if (!saved)
        co_return std::nullopt;
    used.screen.showImported();
    importPresented = false;
    co_return added;
}

std::set<std::string> HistoryImport::importedIDs() const {
    std::set<std::string> ids;
    if (const auto& records = used.state.journal()->importedInstallations)
        for (const InstallationRecord& record : *records)
            ids.insert(record.id());
    return ids;
}

} // namespace tidemark
