#include "core/journal/JournalStore.h"

#include "core/base/Files.h"
#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"

#include <cerrno>
#include <cstring>

namespace tidemark {

namespace fs = std::filesystem;

namespace {

constexpr const char* completionMark = "complete.json";
/// The documents beside the journal that an upgrade could change as well.
constexpr std::array companions{"system-activity.json", "storage-measurements.json"};

Journal decoded(const std::string& bytes, const fs::path& source) {
    try {
        return json::decode<Journal>(bytes);
    } catch (const json::DecodingError& error) {
        throw json::DecodingError(
            asSentence(textFromBytes(source.native()) + " could not be read: " + error.what()));
    }
}

/// A folder that is removed with its contents unless it was moved away.
class WorkingDirectory {
public:
    explicit WorkingDirectory(fs::path place) : path(std::move(place)) {
        createPrivateFolders(path);
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

JournalStore::JournalStore(fs::path document, std::optional<fs::path> legacy,
                           std::optional<fs::path> backup)
    : url(std::move(document)), legacyURL(std::move(legacy)),
      upgradeBackupDirectory(std::move(backup)) {}

Journal JournalStore::load() {
    const std::scoped_lock lock(mutex);
    FileReplacement::removeLeftovers(url);
    const bool isCurrent = fileExists(url);
    if (!isCurrent && (!legacyURL || !fileExists(*legacyURL)))
        return {};
    const fs::path& source = isCurrent ? url : *legacyURL;

    const std::string bytes = readFile(source);
    Journal journal = decoded(bytes, source);
    if (journal.schemaVersion != Journal::supportedVersion)
        throw StoreError(StoreError::Kind::unsupportedVersion,
                         textFromBytes(source.native()) + " is of version "
                             + std::to_string(journal.schemaVersion)
                             + ", which this release can't read.");
    // The history is not used until it is known to be safe.
    preservePreUpgradeHistory(source, bytes);
    if (!isCurrent)
        write(journal);
    return journal;
}

void JournalStore::save(const Journal& journal) {
    const std::scoped_lock lock(mutex);
    write(journal);
}

void JournalStore::write(const Journal& journal) const {
    createPrivateFolders(url.parent_path());
    FileReplacement document(url);
    json::write(journal, [&](std::string_view piece) { document.write(piece); });
    document.commit();
}

void JournalStore::preservePreUpgradeHistory(const fs::path& source,
                                             const std::string& journalData) const {
    if (!upgradeBackupDirectory)
        return;
    if (fileExists(*upgradeBackupDirectory)) {
        if (!fileExists(*upgradeBackupDirectory / completionMark))
            throw IncompleteBackupError();
        return;
    }
    const fs::path parent = upgradeBackupDirectory->parent_path();
    createPrivateFolders(parent);
    const WorkingDirectory working(parent / (".pre-v2-" + Uuid::random().text()));

    const std::string sourceName = source.filename().native();
    std::vector<std::string> copied{sourceName};
    replaceFile(working.path / sourceName, journalData);
    for (const char* name : companions) {
        const fs::path companion = source.parent_path() / name;
        if (name == sourceName || !fileExists(companion))
            continue;
        replaceFile(working.path / name, readFile(companion));
        copied.emplace_back(name);
    }
    replaceFile(working.path / completionMark, json::encoded(copied));

    // The move publishes the backup: a crash before it leaves a hidden folder, and the next load
    // makes a new one.
    if (::rename(working.path.c_str(), upgradeBackupDirectory->c_str()) != 0)
        throw FileError("The backup of your history could not be put in place: "
                            + std::string(std::strerror(errno)) + ".",
                        errno);
    flushFolder(parent);
}

} // namespace tidemark
