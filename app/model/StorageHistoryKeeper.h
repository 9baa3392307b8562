#pragma once

#include "app/base/Observable.h"
#include "app/base/TaskScope.h"
#include "app/base/WorkerPool.h"
#include "app/model/DataFiles.h"
#include "app/model/ModelState.h"
#include "core/growth/StorageHistoryStore.h"

#include <QCoroTask>
#include <cstdint>
#include <optional>
#include <string>

namespace tidemark {

/// Owns the document of daily sizes: reads it, fills it from the kept snapshots where there is
/// none, and adds each new capture, on a thread of its own. A document that can't be read is never
/// written. Main thread only.
class StorageHistoryKeeper : public Observable {
    Q_OBJECT

public:
    /// `state` and `tasks` must outlive this object. `guard` is the guard of the data folder.
    StorageHistoryKeeper(ModelState& state, const DataFiles& files, FolderGuard guard,
                         const TaskScope& tasks);

    /// Reads the document and adds the captures of the journal, which must have been read, and from
    /// then on each new one. Does not throw: sets `problem`.
    QCoro::Task<void> open();

    /// As last read or recorded.
    const Shared<StorageHistory>& history() const { return current; }
    /// Incremented with every change of the history.
    std::uint64_t revision() const { return revisions; }
    /// Why the document can't be read or written, as a sentence; absent when it can.
    const std::optional<std::string>& problem() const { return failure; }

private:
    void followState();
    QCoro::Task<void> catchUp();
    QCoro::Task<void> save();
    void show(StorageHistory history);
    void setProblem(std::optional<std::string> problem);

    ModelState& state;
    const std::filesystem::path document;
    StorageHistoryStore store;
    const TaskScope& tasks;
    WorkerPool thread{1};
    Shared<StorageHistory> current;
    std::uint64_t revisions = 0;
    std::optional<std::string> failure;
    std::uint64_t recordedCaptures = 0;
    /// The document was read, or there was none.
    bool isOpen = false;
    bool isSaving = false;
    /// The journal may have captures that were not added.
    bool isBehind = false;
};

} // namespace tidemark
