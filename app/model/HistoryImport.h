#pragma once

#include "app/model/CaptureFlow.h"
#include "core/history/InstallationHistory.h"

#include <set>

namespace tidemark {

/// What the system remembers of the days before a date, as `InstallationHistory::collect` reads
/// it. Blocks, and throws what that throws; called away from the main thread.
using CollectInstallations = std::function<InstallationPreview(Date now)>;

/// The commands around the installations that the operating system remembers: a new journal gets
/// the recent ones by itself, once, and the user may choose from them at any time. Every failure
/// leaves the journal as it was. Main thread only.
class HistoryImport : public Observable {
    Q_OBJECT

public:
    HistoryImport(ModelState& shared, CaptureFlow& captures, const ModelServices& used,
                  CollectInstallations collectRecords)
        : state(shared), flow(captures), services(used), collect(std::move(collectRecords)) {}

    /// Fills a journal with nothing in it, at most once in its life; after a failure the next call
    /// is the retry. Never fails: `initialHistoryMessage` tells.
    QCoro::Task<void> importInitialHistoryIfNeeded();

    /// Reads what could be imported into `importPreview`, or why not into `importError`. Dropped,
    /// with false, while recording is paused or the controller is busy.
    QCoro::Task<bool> previewImport();

    /// Puts records into the journal, known ones but once, and saves it: the number of new ones.
    /// Absent when nothing was saved: while recording is paused, when the controller is busy, or
    /// after a failing save, which `error` of the state tells.
    QCoro::Task<std::optional<std::size_t>> importHistory(std::vector<InstallationRecord> records);

    /// The ids of what was ever imported.
    std::set<std::string> importedIDs() const;

    /// What brings the timeline's last week forward after an import; its records lie within it.
    void setShowImported(std::function<void()> show) { showImported = std::move(show); }

    /// The import view is open; where it opened is for the view alone.
    Published<bool> importPresented{this};
    Published<bool> importInSettings{this};
    Published<std::optional<InstallationPreview>> importPreview{this};
    Published<std::optional<std::string>> importError{this};
    Published<std::optional<std::string>> initialHistoryMessage{this};
    Published<bool> isImportingInitialHistory{this};

private:
    bool needsInitialHistory() const;
    QCoro::Task<InstallationPreview> collected();
    QCoro::Task<void> fillJournal();

    ModelState& state;
    CaptureFlow& flow;
    const ModelServices& services;
    const CollectInstallations collect;
    std::function<void()> showImported;
};

} // namespace tidemark
