#pragma once

#include "app/base/AppClock.h"
#include "app/base/NotificationCenter.h"
#include "app/base/Published.h"
#include "app/base/TaskScope.h"
#include "app/base/WorkerPool.h"
#include "app/memory/MemoryCollector.h"
#include "app/preferences/Preferences.h"
#include "core/memory/MemoryHistoryStore.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// Owns the memory history and its file, and decides when its collectors run. They stop permanently
/// when a save fails. Main thread only; the file is read and written on a thread of its own, so
/// that no other work delays it. The destructor waits for the last write.
class MemoryHistoryService : public Observable {
    Q_OBJECT

public:
    static constexpr std::string_view saveFailure =
        "New activity history could not be saved. Collection stopped to protect the existing file.";

    /// The constructor's arguments. References and collectors must outlive the service.
    struct Setup {
        /// The document, "memory-history.json" in the data folder.
        std::filesystem::path url;
        Preferences& preferences;
        /// Posts the sleep and wake of the machine and of the screens, and changes of the user's
        /// session.
        NotificationCenter& workspaceCenter;
        AppClock& clock = AppClock::system();
        std::vector<MemoryCollector*> collectors{};
        /// Whether anything may be recorded at all.
        std::function<bool()> collectionAllowed = [] { return true; };
        /// Checked before the document or the contents of clips are written.
        FolderGuard guard{};
    };

    explicit MemoryHistoryService(Setup setup);
    ~MemoryHistoryService() override;

    /// Reads the file and applies the age limits; does nothing once the file has been read. Throws
    /// an `Error` when it can't be read. Then the file is not changed, nothing is collected, and
    /// the next call tries again.
    QCoro::Task<void> load();
    /// Starts the collectors if recording is allowed. From then on they are suspended while the
    /// machine or its screens sleep or the user's session is not active. Does nothing before `load`
    /// and after a `failure`.
    void start();
    /// Stops all collectors until the next `start`.
    void stop();
    /// Waits until everything is written or the writing has failed.
    QCoro::Task<void> writer();

    /// Adds records to the archive, as `MemoryArchive::upsert` does, and applies the limits. When
    /// recording is not allowed, only applies the limits. Records with a number that is not finite
    /// are left out. With `persist`, the archive is written if it differs from the last written
    /// one. Does nothing before `load` and after a `failure`.
    void update(std::vector<MemoryRecord> records, bool persist = true);
    /// True when the history of files begins with this call. False when it has begun before, which
    /// is stored. Called by a collector, that is after `load`.
    bool beginFileHistory();
    /// Pins or unpins a clip. This and `clearClipboard` throw an `Error` and change nothing when
    /// the change could not be saved: before `load` and after a `failure`.
    void togglePin(std::string_view id);
    /// Removes all clips, including pinned ones.
    void clearClipboard();

    const MemoryArchive& archive() const { return current; }
    /// The clips, newest first.
    std::vector<Shared<MemoryRecord>> clips() const;
    /// The newest clip; absent when there is none.
    std::optional<Shared<MemoryRecord>> newestClip() const;
    /// Set when a save failed.
    const std::optional<std::string>& failure() const { return *failureText; }
    /// How long unpinned clips are kept, a setting. A shorter time applies at once.
    std::int64_t clipboardDays() const;
    void setClipboardDays(std::int64_t wanted);

    bool isLoaded() const { return loaded; }
    bool isRunning() const { return running; }
    /// True when collectors may collect.
    bool active() const;
    /// Incremented whenever the collectors are stopped: work that began under another number is
    /// stale.
    std::uint64_t generation() const { return stops; }

Q_SIGNALS:
    /// Emitted when all pending writes have ended. `writer` waits for it.
    void written();

private:
    void followPreferences();
    /// Restarts the collectors after a change of their settings.
    void reconfigure();
    void requireStorable() const;
    void publish(MemoryArchive next);
    void enqueue(const MemoryArchive& next);
    QCoro::Task<void> write();
    void fail();
    void stopCollectors();
    void suspend(std::string_view reason);
    void resume(std::string_view reason);

    Preferences& preferences;
    NotificationCenter& workspace;
    AppClock& clock;
    MemoryHistoryStore store;
    const std::vector<MemoryCollector*> collectors;
    const std::function<bool()> collectionAllowed;

    MemoryArchive current;
    Published<std::optional<std::string>> failureText{this};
    bool loaded = false;
    bool running = false;
    /// Why the collectors are suspended.
    std::set<std::string_view> suspensionReasons;
    std::uint64_t stops = 0;
    std::vector<NotificationCenter::Token> observers;

    /// The last archive that was queued for writing.
    std::optional<MemoryArchive> lastEnqueued;
    /// The archive to write after the running write. A newer one replaces it, since it contains
    /// everything.
    std::optional<MemoryArchive> pending;
    bool writing = false;
    /// Not the common pool, where folders that don't respond could delay the history and the end of
    /// the program.
    WorkerPool thread{1};
    TaskScope tasks;
};

} // namespace tidemark
