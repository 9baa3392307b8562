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

/// Measures many items of very different sizes over many captures. A capture has little time, but a
/// large folder can take minutes to walk, and a partial total must never be reported as a size. So
/// each item gets a slice of time; a walk that does not finish within it is kept in memory, with no
/// file open, and continued by a later capture, and until then the item keeps its last known size.
///
/// Finished sizes are saved when they are a second old, or at once after an item that took longer
/// than a second, so a crash loses at most the small items of the last second. Unfinished walks are
/// not saved.
///
/// Thread-safe. One call runs at a time, but a running measurement releases the lock at each of its
/// pauses: other calls wait at most for one batch of walking, one save, or the listing of one
/// folder.
class ComponentStorageScanner {
public:
    using Measurement = std::expected<FolderSize, StorageMeasurementFailure>;
    /// Measures the item at a path within `seconds`.
    using Measure = std::function<Measurement(const std::filesystem::path&, double seconds)>;

    /// `url` is the file of finished measurements; if empty they are kept in memory only.
    /// `entriesPerSlice` limits the steps of one slice. `guard` is the guard of the folder of
    /// `url`.
    ComponentStorageScanner(std::filesystem::path url, std::int64_t entriesPerSlice,
                            Clock& clock = Clock::system(), FolderGuard guard = {});

    /// Between `beginCapture` and `endCapture`, a folder that was walked as part of another one is
    /// not walked again.
    void beginCapture();
    void endCapture();
    /// Saves the measurements that are not in the file yet. Throws an `Error` when that fails; a
    /// later save tries again.
    void save();
    /// Drops unfinished walks outside of `roots`.
    void retainCursors(const std::vector<std::filesystem::path>& roots);

    /// Number of entries walked since construction, to show progress. Does not wait for the lock.
    std::int64_t entriesWalked() const { return walked.load(std::memory_order_relaxed); }

    /// Spends up to `seconds` on measuring the items whose size is not known for their present
    /// state or is `refreshInterval` seconds old, in the order of their last attempts. The report
    /// has every item, measured or not, by name; running out of time or being stopped is not a
    /// failure. `measure` is called instead of the walk, if given, without the lock. Saves at the
    /// end; during a capture, which calls `save` itself, at most once a second. Throws an `Error`
    /// while another `collect` is running, or when the file can't be read or written.
    StorageMeasurementReport collect(const std::vector<StorageMeasurementItem>& items,
                                     double seconds, double refreshInterval,
                                     const Measure& measure = {}, const std::stop_token& stop = {});

    /// Measures one folder: lists its own files now, and passes each subfolder as an item to
    /// `collect`. Throws a `StorageMeasurementError` when the folder can't be listed completely,
    /// and what `collect` throws.
    FolderStorageReport collectFolder(const std::filesystem::path& url, double seconds,
                                      const std::stop_token& stop = {});

private:
    using Lock = std::unique_lock<std::mutex>;

    using SharedWalk = std::expected<std::shared_ptr<StorageTraversal>, StorageMeasurementFailure>;

    /// An unfinished walk.
    struct Cursor {
        /// The item in the state in which the walk was started.
        Shared<StorageMeasurementItem> item;
        /// Shared, because another call may drop the cursor while the walk pauses.
        std::shared_ptr<StorageTraversal> walk;
        /// Whether it replaced a walk that began before the item changed.
        bool startedAnew = false;

        bool continuesFor(const StorageMeasurementItem& now) const;
    };
    /// What all attempts of one `collect` have in common.
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
    /// What the running `collect` walked since its last pause.
    WalkBatch batch;
    CaptureSizes captureSizes;
    /// Number of entries walked in the last slice.
    std::int64_t lastVisited = 0;
    /// The item in the state that the last attempt measured.
    Shared<StorageMeasurementItem> lastMeasured;
    std::atomic<std::int64_t> walked = 0;
};

} // namespace tidemark
