#pragma once

#include "app/base/WorkerPool.h"
#include "app/model/AppDataLocation.h"
#include "core/base/FolderGuard.h"
#include "core/journal/JournalStore.h"

#include <QCoroTask>

namespace tidemark {

/// The document of the journal, read and written on a thread of its own: saves reach it in the
/// order in which they were asked for, and folders that never answer can't hold them up. Main
/// thread only; outlives its tasks.
class JournalFile {
public:
    /// `guard` is asked before anything is written.
    JournalFile(const DataFiles& files, FolderGuard guard);

    /// Throws what `JournalStore::load` throws.
    QCoro::Task<Journal> load();
    /// Writes a journal, which the caller keeps as it is until the end. Throws what
    /// `JournalStore::save` throws.
    QCoro::Task<void> save(const Journal* journal);

private:
    JournalStore store;
    WorkerPool thread{1};
};

} // namespace tidemark
