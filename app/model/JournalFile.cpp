#include "app/model/JournalFile.h"

#include "app/base/Background.h"
#include "core/base/Documents.h"

#include <utility>

namespace tidemark {

JournalFile::JournalFile(const DataFiles& files, FolderGuard guard)
    : store(files.journal(), files.legacyJournal, files.upgradeBackup(), std::move(guard)) {}

// Loading and saving have the priority `userInitiated`, because the user waits for them.

QCoro::Task<Journal> JournalFile::load() {
    const auto read = [this](const std::stop_token&) { return store.load(); };
    Journal journal = co_await runInBackground(read, {}, WorkPriority::userInitiated, &thread);
    co_return journal;
}

QCoro::Task<void> JournalFile::save(Journal* journal) {
    const auto write = [this, journal](const std::stop_token&) {
        store.saveWithin(largestDocument, *journal);
    };
    co_await runInBackground(write, {}, WorkPriority::userInitiated, &thread);
}

} // namespace tidemark
