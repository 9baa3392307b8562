#pragma once

#include "core/base/Error.h"
#include "core/base/FolderGuard.h"
#include "core/base/OrderedMutex.h"
#include "core/journal/Journal.h"

#include <filesystem>
#include <optional>
#include <string>

namespace tidemark {

/// Reads and writes the journal document. The journal is the only copy of the user's history, so
/// every save replaces the document atomically, a document that can't be read is left exactly as it
/// is, and before a new release first uses the history it makes a copy of it.
///
/// Thread-safe: operations run one at a time, in the order of the calls.
class JournalStore {
public:
    /// The document has a version that this release does not support.
    class StoreError : public Error {
    public:
        enum class Kind { unsupportedVersion };
        StoreError(Kind kind, const std::string& sentence) : Error(sentence), reason(kind) {}
        Kind kind() const { return reason; }

    private:
        Kind reason;
    };

    /// The copy of an earlier release's history could not be completed.
    class IncompleteBackupError : public Error {
    public:
        IncompleteBackupError()
            : Error("The pre-v2 history backup is incomplete. Your existing history has not been "
                    "modified.") {}
    };

    /// `url` is the document. `legacyURL` is where an earlier release kept it; it is read when
    /// there is no document at `url`, and never written. `upgradeBackupDirectory` gets a copy of
    /// the history once, before this release first uses it; only the process that holds the lock of
    /// the data folder passes it. `guard` is the guard of the data folder.
    explicit JournalStore(std::filesystem::path url,
                          std::optional<std::filesystem::path> legacyURL = {},
                          std::optional<std::filesystem::path> upgradeBackupDirectory = {},
                          FolderGuard guard = {});

    /// The stored history, or an empty journal when there is no document; none is created then. A
    /// history that was read from `legacyURL` is written to `url`. With an
    /// `upgradeBackupDirectory`, first removes the temporary files of killed saves. Throws
    /// `FileError`, `StoreError`, `IncompleteBackupError` and what the guard throws; the document
    /// is unchanged then.
    Journal load();

    /// Replaces the document, with mode 0600. Throws `FileError` and what the guard throws; the old
    /// document is kept then.
    void save(const Journal& journal);
    /// Like `save`. Where the document would have more than `limit` bytes, first drops the oldest
    /// snapshots of `journal`, so that a history that has reached the limit can grow on.
    void saveWithin(std::size_t limit, Journal& journal);

private:
    void preservePreUpgradeHistory(const std::filesystem::path& source,
                                   const std::string& journalData) const;

    const std::filesystem::path url;
    const std::optional<std::filesystem::path> legacyURL;
    const std::optional<std::filesystem::path> upgradeBackupDirectory;
    const FolderGuard guard;
    OrderedMutex mutex;
};

} // namespace tidemark
