#pragma once

#include "app/model/CaptureFlow.h"
#include "app/model/HistoryScreen.h"
#include "core/history/InstallationHistory.h"

#include <set>

namespace tidemark {

/// Reads the recent installations, like `InstallationHistory::collect`. Blocks; called in the
/// background.
using CollectInstallations = std::function<InstallationPreview(Date now)>;

/// Imports installations from the operating system's log. A new journal gets the recent ones
/// automatically, once; later the user can choose which to import. A failure leaves the journal
/// unchanged. Main thread only.
class HistoryImport : public Observable {
    Q_OBJECT

public:
    /// References must outlive this object.
    struct Setup {
        ModelState& state;
        CaptureFlow& flow;
        JournalFile& file;
        /// Shows the last week of the timeline after an import, since the records are from that
        /// week.
        HistoryScreen& screen;
        AppClock& clock;
        const TaskScope& tasks;
        CollectInstallations collect;
    };

    explicit HistoryImport(Setup setup) : used(std::move(setup)) {}

    /// Imports into an empty journal, at most once in its lifetime; after a failure the next call
    /// tries again. Does not throw: sets `initialHistoryMessage`.
    QCoro::Task<void> importInitialHistoryIfNeeded();

    /// Reads the records that can be imported and sets `importPreview` or `importError`. Returns
    /// false and does nothing while recording is paused or another operation is running.
    QCoro::Task<bool> previewImport();

    /// Adds records to the journal, without duplicates, saves it and returns the number of new
    /// ones. Absent when nothing was saved: while recording is paused, when another operation is
    /// running, or when the save failed, which sets `error` of the state.
    QCoro::Task<std::optional<std::size_t>> importHistory(std::vector<InstallationRecord> records);

    /// The ids of all imported records.
    std::set<std::string> importedIDs() const;

    /// True while the import view is open.
    Published<bool> importPresented{this};
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
