#include "app/memory/FileCollector.h"

#include "app/base/Background.h"
#include "app/memory/MemoryFolders.h"
#include "app/memory/MemoryHistoryService.h"
#include "app/preferences/PreferenceKeys.h"
#include "core/base/Error.h"
#include "core/memory/FileRecords.h"
#include "core/memory/SaveSeries.h"

#include <algorithm>
#include <iterator>

namespace tidemark {

namespace {

/// Files whose records are added at once. Adding them takes about a millisecond.
constexpr std::size_t partSize = 100;

using Files = std::vector<IndexedFileObservation>;

/// The records of one part of the files, and those downloads in the archive that were opened again
/// according to these records.
std::vector<MemoryRecord> recordsOf(const Files& files, const MemoryArchive& archive, Date after,
                                    Date observedAt) {
    auto records = FileRecords::of(files, after, observedAt);
    auto reopened = FileRecords::reopenedDownloads(archive.records, records);
    records = SaveSeries::continued(archive.records, std::move(records));
    std::ranges::move(reopened, std::back_inserter(records));
    return records;
}

} // namespace

FileCollector::FileCollector(Setup setup) : uses(std::move(setup)) {}

FileCollector::~FileCollector() {
    stop();
    tasks.drain();
}

void FileCollector::start(MemoryHistoryService& of) {
    if (!read(uses.preferences, preferenceKeys::memoryFiles))
        return;
    if (!uses.index) {
        statusText = unavailable;
        return;
    }
    history = &of;
    const bool isFirst = of.beginFileHistory();
    cutoff = uses.clock.now() + (isFirst ? -importedTime : 0);
    if (read(uses.preferences, preferenceKeys::memoryAllIndexedFiles))
        follow(std::nullopt);
    else
        tasks.start(openFolders());
}

void FileCollector::stop() {
    if (uses.index)
        uses.index->stop();
    history = nullptr;
    waiting.clear();
    for (const auto& folder : std::exchange(opened, {}))
        uses.bookmarks.stop(folder);
    statusText = read(uses.preferences, preferenceKeys::memoryFiles) ? "Observation paused"
                                                                     : "File history off";
}

bool FileCollector::isCurrent(std::uint64_t generation) const {
    return history && history->generation() == generation && history->active()
           && read(uses.preferences, preferenceKeys::memoryFiles);
}

QCoro::Task<void> FileCollector::include(std::filesystem::path folder) {
    const auto hold = tasks.hold();
    const auto create = [operations = uses.bookmarks, folder](const std::stop_token&) {
        return operations.create(folder);
    };
    std::optional<Data> bookmark;
    try {
        bookmark = co_await runInBackground(create, tasks.token());
    } catch (const Error& error) {
        qWarning("The folder can't be included. %s", error.what());
    }
    if (!bookmark || !MemoryFolders::include(uses.preferences, folder, *std::move(bookmark)))
        statusText = std::string(MemoryFolders::notIncluded);
}

void FileCollector::remove(const std::filesystem::path& folder) {
    MemoryFolders::remove(uses.preferences, folder);
}

QCoro::Task<void> FileCollector::openFolders() {
    const auto hold = tasks.hold();
    const auto generation = history->generation();
    const auto open = [folders = MemoryFolders(uses.preferences, uses.bookmarks)](
                          const std::stop_token&) { return folders.open(); };
    std::vector<std::filesystem::path> folders;
    try {
        folders = co_await runInBackground(open, tasks.token());
    } catch (const Error& error) {
        qWarning("The folders of the file history can't be opened. %s", error.what());
    }
    if (!isCurrent(generation)) {
        for (const auto& folder : folders)
            uses.bookmarks.stop(folder);
        co_return;
    }
    opened = folders;
    if (folders.empty())
        statusText = "Choose a folder to record file metadata.";
    else
        follow(std::move(folders));
}

void FileCollector::follow(std::optional<std::vector<std::filesystem::path>> folders) {
    hasMatches = false;
    hasStopped = false;
    const bool isStarted =
        uses.index->start({.since = cutoff, .folders = std::move(folders)},
                          [this](FileIndex::Matches matches) { take(std::move(matches)); });
    statusText = isStarted ? "Reading indexed metadata…" : unavailable;
}

void FileCollector::take(FileIndex::Matches matches) {
    hasMatches = hasMatches || !matches.files.empty();
    isLive = matches.isLive;
    hasStopped = matches.hasStopped;
    std::ranges::move(matches.files, std::back_inserter(waiting));
    if (!isAdding)
        tasks.start(add());
}

QCoro::Task<void> FileCollector::add() {
    const auto hold = tasks.hold();
    isAdding = true;
    while (!waiting.empty()) {
        const auto generation = history->generation();
        const auto make = [files = nextPart(), archive = history->archive(), after = cutoff,
                           now = uses.clock.now()](const std::stop_token&) {
            return recordsOf(files, archive, after, now);
        };
        std::vector<MemoryRecord> records;
        try {
            records = co_await runInBackground(make, tasks.token(), WorkPriority::utility, &thread);
        } catch (const Error& error) {
            qWarning("Recent files can't be recorded. %s", error.what());
        }
        if (isCurrent(generation) && !records.empty())
            history->update(std::move(records));
    }
    isAdding = false;
    if (history)
        showMatches();
}

Files FileCollector::nextPart() {
    const auto end =
        waiting.begin() + static_cast<std::ptrdiff_t>(std::min(waiting.size(), partSize));
    Files part(std::move_iterator(waiting.begin()), std::move_iterator(end));
    waiting.erase(waiting.begin(), end);
    return part;
}

void FileCollector::showMatches() {
    if (hasStopped) {
        statusText = "Recent files are not followed any more, because of an error.";
        return;
    }
    if (!hasMatches) {
        statusText = "No indexed matches. Check folder access and Spotlight indexing.";
        return;
    }
    const bool isEverywhere = read(uses.preferences, preferenceKeys::memoryAllIndexedFiles);
    std::string text =
        isEverywhere ? "Indexed files across this Mac" : "Indexed files in included folders";
    text += " · up to 2,000 matches per update";
    if (!isLive)
        text += " · some changes found later";
    statusText = std::move(text);
}

} // namespace tidemark
