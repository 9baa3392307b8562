#pragma once

#include "core/base/Error.h"
#include "core/base/FolderGuard.h"
#include "core/base/OrderedMutex.h"
#include "core/journal/Journal.h"

#include <filesystem>
#include <optional>
#include <string>

namespace tidemark {

/// Reads and writes the journal document. Any thread may call it; operations run one at a time, in
/// the order of their calls. It never repairs, overwrites or renames a document that it could not
/// read.
class JournalStore {
public:
    /// The document is of a version that this release does not know.
    class StoreError : public Error {
    public:
        enum class Kind { unsupportedVersion };
        StoreError(Kind which, const std::string& sentence) : Error(sentence), reason(which) {}
        Kind kind() const { return reason; }

    private:
        Kind reason;
    };

    /// The copy of the history as an earlier release left it was begun and not finished.
    class IncompleteBackupError : public Error {
    public:
        IncompleteBackupError()
            : Error("The pre-v2 history backup is incomplete. Your existing history has not been "
                    "modified.") {}
    };

    /// `url` is the document. `legacyURL` is where an earlier release kept it: it is read when
    /// there is none at `url`, and never written. `upgradeBackupDirectory` gets a copy of the
    /// history, once, before this release first uses it; only the process that holds the lock of
    /// the data folder names one. `guard` is that of the data folder.
    explicit JournalStore(std::filesystem::path url,
                          std::optional<std::filesystem::path> legacyURL = {},
                          std::optional<std::filesystem::path> upgradeBackupDirectory = {},
                          FolderGuard guard = {});

    /// The stored history; a new journal where there is none, which changes nothing on disk. Throws
    /// `FileError`, `StoreError`, `IncompleteBackupError` and what the guard throws; the document
    /// is unchanged then. With an `upgradeBackupDirectory`, what a killed save left is removed
    /// first.
    Journal load();

    /// Replaces the document whole, with mode 0600. Throws `FileError` and what the guard throws;
    /// the old document is there then.
    void save(const Journal& journal);

private:
    void preservePreUpgradeHistory(const std::filesystem::path& source,
                                   const std::string& journalData) const;

    const std::filesystem::path url;
    const std::optional<std::filesystem::path> legacyURL;
    const std::optional<std::filesystem::path> upgradeBackupDirectory;
    const FolderGuard permission;
    OrderedMutex mutex;
};

} // namespace tidemark
