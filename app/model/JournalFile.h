#pragma once

#include "app/base/WorkerPool.h"
#include "app/model/DataFiles.h"
#include "core/base/FolderGuard.h"
#include "core/journal/JournalStore.h"

#include <QCoroTask>

namespace tidemark {

/// Reads and writes the journal document on a thread of its own, so that saves run in the order of
/// the calls and are not delayed by folders that don't respond. Main thread only; must outlive its
/// running calls.
class JournalFile {
public:
    /// `guard` is checked before anything is written.
    JournalFile(const DataFiles& files, FolderGuard guard);

    /// Throws as `JournalStore::load` does.
    QCoro::Task<Journal> load();
    /// Writes a journal as `JournalStore::saveWithin` does with the limit of documents, and throws
    /// as it does. Nothing else may use the journal until this has ended.
    QCoro::Task<void> save(Journal* journal);

private:
    JournalStore store;
    WorkerPool thread{1};
};

} // namespace tidemark
