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

/// Owns the memory history: what there is of it, its file, and when its collectors may run. They
/// stop for good when a save fails. Main thread only; the file is read and written on a thread of
/// its own, which no other work can hold up. Destroying it waits for the last write.
class MemoryHistoryService : public Observable {
    Q_OBJECT

public:
    static constexpr std::string_view saveFailure =
        "New activity history could not be saved. Collection stopped to protect the existing file.";

    /// What it is built with. All that is given by reference outlives it.
    struct Setup {
        /// The document, "memory-history.json" in the data folder.
        std::filesystem::path url;
        Preferences& preferences;
        /// Posts sleep and wake of the machine, of the screens and of the user's session.
        NotificationCenter& workspaceCenter;
        AppClock& clock = AppClock::system();
        std::vector<MemoryCollector*> collectors{};
        /// Whether anything may be recorded at all.
        std::function<bool()> collectionAllowed = [] { return true; };
        /// Otherwise `start` does nothing.
        bool observeLive = true;
        /// Asked before the document or its side files are written.
        FolderGuard guard{};
    };

    explicit MemoryHistoryService(Setup setup);
    ~MemoryHistoryService() override;

    /// Reads the file, once, and applies the age limits. Throws an `Error` when it can't be read:
    /// it is not touched then, nothing is collected, and the next call tries again.
    QCoro::Task<void> load();
    /// Starts the collectors, which from then on rest while the machine, its screens or the user's
    /// session do. Only after `load`, and never again after a `failure`.
    void start();
    /// Ends all collecting, until the next `start`.
    void stop();
    /// Waits until nothing is left to be written.
    QCoro::Task<void> writer();

    /// The one way into the archive: adds records as `MemoryArchive::upsert` does, or none when
    /// recording is not allowed; the limits apply in any case. Records with a number that is not
    /// finite are left out. With `persist`, the result is written unless it is what was written
    /// last. Nothing before `load` or after a `failure`.
    void update(std::vector<MemoryRecord> records, bool persist = true);
    /// Pins or unpins a clip. Both throw an `Error`, and change nothing, where it would be undone
    /// by the next start: before `load`, and after a `failure`.
    void togglePin(std::string_view id);
    /// Removes all clips, pinned ones too.
    void clearClipboard();

    const MemoryArchive& archive() const { return current; }
    /// The clips, newest first.
    std::vector<Shared<MemoryRecord>> clips() const;
    /// Set when a save failed.
    const std::optional<std::string>& failure() const { return *failureText; }
    /// How long unpinned clips are kept: a setting, of which a shorter time applies when it is set.
    std::int64_t clipboardDays() const;
    void setClipboardDays(std::int64_t wanted);

    bool isLoaded() const { return loaded; }
    bool isRunning() const { return running; }
    /// Whether collectors may collect.
    bool active() const;
    /// Another number whenever the collectors were stopped: what began under another is stale.
    std::uint64_t generation() const { return stops; }

Q_SIGNALS:
    /// For `writer`: a run of writes has ended.
    void written();

private:
    void followPreferences();
    /// Starts the collectors afresh, after a change of what they observe.
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
    const bool observeLive;
    MemoryHistoryStore store;
    const std::vector<MemoryCollector*> collectors;
    const std::function<bool()> collectionAllowed;

    MemoryArchive current;
    Published<std::optional<std::string>> failureText{this};
    bool loaded = false;
    bool running = false;
    /// Why the collectors rest.
    std::set<std::string_view> suspensionReasons;
    std::uint64_t stops = 0;
    std::vector<NotificationCenter::Token> observers;

    /// What was last given to be written.
    std::optional<MemoryArchive> lastEnqueued;
    /// What is to be written after the write that runs. A newer one takes its place: it holds all
    /// that the older one did.
    std::optional<MemoryArchive> pending;
    bool writing = false;
    /// In the common pool, folders that never answer would hold up the history and its end.
    WorkerPool thread{1};
    TaskScope tasks;
};

} // namespace tidemark
