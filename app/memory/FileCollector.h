#pragma once

#include "app/base/AppClock.h"
#include "app/base/Published.h"
#include "app/base/TaskScope.h"
#include "app/base/WorkerPool.h"
#include "app/capture/BookmarkOperations.h"
#include "app/memory/MemoryCollector.h"
#include "app/ports/FileIndex.h"
#include "app/preferences/Preferences.h"

#include <deque>
#include <memory>
#include <string>

namespace tidemark {

/// Records which files were used, changed, created and downloaded: at its first start those of the
/// last 30 days as well, later only what happens while it runs. Main thread only; records are made
/// on another thread and added in small parts, so that the event loop is not blocked.
class FileCollector final : public Observable, public MemoryCollector {
    Q_OBJECT

public:
    /// At the first start, files of this many seconds before it are recorded as well.
    static constexpr double importedTime = 30 * 86'400.0;

    /// References must outlive the collector.
    struct Setup {
        Preferences& preferences;
        /// Null where the system has none.
        std::unique_ptr<FileIndex> index;
        AppClock& clock = AppClock::system();
        BookmarkOperations bookmarks = BookmarkOperations::direct();
    };

    explicit FileCollector(Setup setup);
    ~FileCollector() override;

    /// What the collector does at present, to be shown with the setting.
    const std::string& status() const { return *statusText; }

    /// Adds a folder that the user has chosen, or removes one. A folder that can't be remembered is
    /// not added, and `status` is set.
    QCoro::Task<void> include(std::filesystem::path folder);
    void remove(const std::filesystem::path& folder);

    void start(MemoryHistoryService& history) override;
    void stop() override;

private:
    QCoro::Task<void> openFolders();
    void follow(std::optional<std::vector<std::filesystem::path>> folders);
    void take(FileIndex::Matches matches);
    QCoro::Task<void> add();
    std::vector<IndexedFileObservation> nextPart();
    void showMatches();
    /// Whether work that began when the service had this `generation` may still be recorded.
    bool isCurrent(std::uint64_t generation) const;

    static constexpr const char* unavailable =
        "File index unavailable. Check folder access and Spotlight indexing.";

    const Setup uses;
    Published<std::string> statusText{this, "Not observing"};
    /// Null while not started.
    MemoryHistoryService* history = nullptr;
    Date cutoff;
    /// Folders that were opened by their bookmarks.
    std::vector<std::filesystem::path> opened;
    /// Found, but not recorded yet.
    std::deque<IndexedFileObservation> waiting;
    bool isAdding = false;
    bool hasMatches = false;
    bool isLive = true;
    bool hasStopped = false;
    /// Not the common pool, where folders that don't respond could delay the records.
    WorkerPool thread{1};
    TaskScope tasks;
};

} // namespace tidemark
