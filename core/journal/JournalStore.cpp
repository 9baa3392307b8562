#include "core/journal/JournalStore.h"

#include "core/base/CanonicalPath.h"
#include "core/base/Documents.h"
#include "core/base/Text.h"
#include "core/base/Uuid.h"

#include <cerrno>

namespace tidemark {

namespace fs = std::filesystem;

namespace {

constexpr const char* completionMark = "complete.json";
/// The other documents in the folder that an upgrade may change.
constexpr std::array companions{"system-activity.json", "storage-measurements.json"};

constexpr std::string_view workingPrefix = ".pre-v2-";

bool isWorkingDirectory(const fs::directory_entry& entry) {
    const std::string name = entry.path().filename().native();
    std::error_code error;
    return name.starts_with(workingPrefix)
           && Uuid::parse(std::string_view(name).substr(workingPrefix.size()))
           && entry.symlink_status(error).type() == fs::file_type::directory;
}

/// Removes incomplete copies that killed processes left.
void removeUnfinishedBackups(const fs::path& parent) {
    std::error_code error;
    for (fs::directory_iterator entries(parent, error), end; !error && entries != end;
         entries.increment(error))
        if (std::error_code ignored; isWorkingDirectory(*entries))
            fs::remove_all(entries->path(), ignored);
}

/// A temporary folder, removed with its contents unless it was renamed.
class WorkingDirectory {
public:
    WorkingDirectory(fs::path place, const FolderGuard& guard) : path(std::move(place)) {
        createPrivateFolders(path, guard);
    }
    ~WorkingDirectory() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;

    const fs::path path;
};

} // namespace

JournalStore::JournalStore(fs::path url, std::optional<fs::path> legacyURL,
                           std::optional<fs::path> upgradeBackupDirectory, FolderGuard guard)
    : url(std::move(url)), legacyURL(std::move(legacyURL)),
      upgradeBackupDirectory(std::move(upgradeBackupDirectory)), guard(std::move(guard)) {}

Journal JournalStore::load() {
    const std::scoped_lock lock(mutex);
    // Only the process that holds the lock of the data folder gives the constructor this directory.
    if (upgradeBackupDirectory) {
        guard.require();
        FileReplacement::removeLeftovers(canonicalPath(url));
    }
    const bool isCurrent = fileExists(url);
    if (!isCurrent && !legacyURL)
        return {};
    const fs::path& source = isCurrent ? url : *legacyURL;
    const auto bytes = readDocumentBytes(source);
    if (!bytes)
        return {};
    auto journal = decodeDocument<Journal>(*bytes, source);
    if (journal.schemaVersion != Journal::supportedVersion)
        throw StoreError(StoreError::Kind::unsupportedVersion,
                         textFromBytes(source.native()) + " is of version "
                             + std::to_string(journal.schemaVersion)
                             + ", which this release can't read.");
    // The copy must be complete before the history is used.
    preservePreUpgradeHistory(source, *bytes);
    if (!isCurrent)
        writeDocument(url, journal, guard);
    return journal;
}

void JournalStore::save(const Journal& journal) {
    const std::scoped_lock lock(mutex);
    writeDocument(url, journal, guard);
}

void JournalStore::saveWithin(std::size_t limit, Journal& journal) {
    const std::scoped_lock lock(mutex);
    for (;;)
        try {
            return writeDocument(url, journal, guard, limit);
        } catch (const DocumentTooLarge&) {
            if (!journal.dropOldestSnapshots())
                throw;
        }
}

void JournalStore::preservePreUpgradeHistory(const fs::path& source,
                                             const std::string& journalData) const {
    if (!upgradeBackupDirectory)
        return;
    guard.require();
    const fs::path parent = upgradeBackupDirectory->parent_path();
    removeUnfinishedBackups(parent);
    if (fileExists(*upgradeBackupDirectory)) {
        if (!fileExists(*upgradeBackupDirectory / completionMark))
            throw IncompleteBackupError();
        return;
    }
    const WorkingDirectory working(parent / (std::string(workingPrefix) + Uuid::random().text()),
                                   guard);

    const std::string sourceName = source.filename().native();
    std::vector<std::string> copied{sourceName};
    replaceFile(working.path / sourceName, journalData, guard);
    for (const char* name : companions) {
        if (name == sourceName)
            continue;
        const auto bytes = readDocumentBytes(source.parent_path() / name);
        if (!bytes)
            continue;
        replaceFile(working.path / name, *bytes, guard);
        copied.emplace_back(name);
    }
    replaceFile(working.path / completionMark, json::encoded(copied), guard);

    // Renaming the folder completes the backup. A crash before leaves a hidden folder that the next
    // load removes.
    guard.require();
    if (::rename(working.path.c_str(), upgradeBackupDirectory->c_str()) != 0)
        throw FileError::ofSystem(*upgradeBackupDirectory, "could not be put in place", errno);
    flushFolder(parent);
}

} // namespace tidemark
