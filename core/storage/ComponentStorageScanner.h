#pragma once

#include "core/base/Clock.h"
#include "core/records/FolderStorageReport.h"
#include "core/storage/BatchedWalk.h"
#include "core/storage/CaptureSizes.h"
#include "core/storage/MeasurementCache.h"
#include "core/storage/StorageTraversal.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <stop_token>

namespace tidemark {

/// Measures many items of very different sizes over many captures, in small time budgets, and
/// never presents a partial total as a size. A walk that does not end within its slice of time is
/// kept, with nothing of it open, and resumed at a later capture. Unfinished walks live in memory
/// only. Finished sizes are saved once they are a second old, and at once after an item that took
/// longer than a second: a crash loses at most the small items of the last second.
///
/// Any thread may call. Calls take turns, and a running measurement lets others in at each of its
/// pauses: they wait for one batch of walking, one save, or the listing of one folder.
class ComponentStorageScanner {
public:
    using Measurement = std::expected<FolderSize, StorageMeasurementFailure>;
    /// Measures what lies at a path within so many seconds.
    using Measure = std::function<Measurement(const std::filesystem::path&, double seconds)>;

    /// `url` is the file of finished measurements; without one they are kept in memory only.
    /// `entriesPerSlice` bounds the steps of one slice. `guard` is that of the folder of `url`.
    ComponentStorageScanner(std::filesystem::path url, std::int64_t entriesPerSlice,
                            Clock& clock = Clock::system(), FolderGuard guard = {});

    /// Sizes found between these two are shared: a folder walked as part of another costs nothing.
    void beginCapture();
    void endCapture();
    /// Saves what is not saved yet. Throws an `Error` when that fails; a later save tries again.
    void save();
    /// Drops the unfinished walks of all that lies outside of `roots`.
    void retainCursors(const std::vector<std::filesystem::path>& roots);

    /// Entries walked since the scanner was made. Never waits; for telling how a capture goes on.
    std::int64_t entriesWalked() const { return walked.load(std::memory_order_relaxed); }

    /// Spends up to `seconds` on the items whose size is not known for their present state or is
    /// `refreshInterval` seconds old, those first that waited longest. The report holds every
    /// item, measured or not, by name: running out of time, or being stopped, is no failure.
    /// `measure` takes the place of the walk and runs while others may call. Outside of a capture
    /// all is saved at the end; within one, whose end calls `save`, at most once a second.
    /// Throws an `Error` while another `collect` runs, or when the file can't be read or written.
    StorageMeasurementReport collect(const std::vector<StorageMeasurementItem>& items,
                                     double seconds, double refreshInterval,
                                     const Measure& measure = {}, const std::stop_token& stop = {});

    /// Measures one folder in two layers: its own files are listed now, and each subfolder is an
    /// item of `collect`. Throws a `StorageMeasurementError` when the folder can't be listed
    /// whole, and what `collect` throws.
    FolderStorageReport collectFolder(const std::filesystem::path& url, double seconds,
                                      const std::stop_token& stop = {});

private:
    using Lock = std::unique_lock<std::mutex>;

    using SharedWalk = std::expected<std::shared_ptr<StorageTraversal>, StorageMeasurementFailure>;

    struct Cursor {
        /// What the walk was started for.
        Shared<StorageMeasurementItem> item;
        /// Shared, since a cursor may be dropped in a pause of its own walk.
        std::shared_ptr<StorageTraversal> walk;
        /// Whether it took the place of a walk that began before the item changed.
        bool startedAnew = false;

        bool goesOnFor(const StorageMeasurementItem& now) const;
    };
    struct Round {
        double deadline;
        const Measure& measure;
        const std::stop_token& stop;
    };

    bool rest(Lock& lock, double seconds, const std::stop_token& stop);
    StorageMeasurementReport collectLocked(Lock& lock,
                                           const std::vector<StorageMeasurementItem>& items,
                                           double seconds, double refreshInterval,
                                           const Measure& measure, const std::stop_token& stop);
    MeasurementRecords merged(const std::vector<StorageMeasurementItem>& items) const;
    std::optional<StorageMeasurementRecord> attempt(Lock& lock, StorageMeasurementRecord record,
                                                    const Round& round);
    Measurement measureNow(Lock& lock, const StorageMeasurementRecord& record, const Round& round);
    Measurement measureSlice(Lock& lock, const Shared<StorageMeasurementItem>& item, double seconds,
                             const std::stop_token& stop);
    SharedWalk cursorFor(const Shared<StorageMeasurementItem>& item);

    const std::int64_t entriesPerSlice;
    Clock& clock;

    std::mutex mutex;
    MeasurementCache cache;
    std::map<std::string, Cursor> cursors;
    bool collecting = false;
    bool captureActive = false;
    /// What the running `collect` walked since it rested.
    WalkBatch batch;
    CaptureSizes captureSizes;
    /// Entries walked by the last slice.
    std::int64_t lastVisited = 0;
    /// The state of the item that the last attempt measured.
    Shared<StorageMeasurementItem> lastMeasured;
    std::atomic<std::int64_t> walked = 0;
};

} // namespace tidemark
