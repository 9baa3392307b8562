#pragma once

#include "app/model/CaptureFlow.h"
#include "app/model/HistoryScreen.h"
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
    /// All that is given by reference outlives this.
    struct Setup {
        ModelState& state;
        CaptureFlow& flow;
        JournalFile& file;
        /// Where the timeline's last week is brought forward after an import; its records lie
        /// within it.
        HistoryScreen& screen;
        AppClock& clock;
        const TaskScope& tasks;
        CollectInstallations collect;
    };

    explicit HistoryImport(Setup setup) : used(std::move(setup)) {}

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

    const Setup used;
};

} // namespace tidemark
