#pragma once

#include "core/base/Clock.h"
#include "core/storage/StorageTraversal.h"

#include <functional>
#include <limits>
#include <optional>
#include <stop_token>

namespace tidemark {

/// The limits of one run of a walk.
struct WalkBudget {
    /// On the monotonic clock, in seconds.
    double deadline = std::numeric_limits<double>::infinity();
    std::int64_t steps = std::numeric_limits<std::int64_t>::max();
};

/// Length of the pause between two batches, in seconds.
inline constexpr double walkPause = 0.001;

/// The part of a walk since the last pause. Passed on from one walk to the next, so that many small
/// walks in a row pause as often as one large walk.
struct WalkBatch {
    /// On the monotonic clock, in seconds; absent before the first step.
    std::optional<double> start;
    std::int64_t steps = 0;

    /// True after 1024 steps, or 25 milliseconds after `start`.
    bool isOver(double now) const;
};

/// Waits `seconds` between two batches. Returns false when the run was cancelled meanwhile.
using BatchPause = std::function<bool(double seconds)>;

/// Continues a walk in batches, with a pause of a millisecond in between, so that a measurement in
/// the background keeps neither the disk nor a core busy. A batch ends after 1024 steps or 25
/// milliseconds, whichever comes first.
///
/// A value means that the walk is finished; it is the walk's own result, a size or a failure. An
/// error means that the walk was interrupted and can be resumed by another call: `cancelled`,
/// `timeLimit` (the deadline was reached; if it had passed already, no step was made) or `paused`
/// (the steps of the budget are used up).
///
/// `batch` is the part walked since the last pause, and is updated. `pause` may unlock a mutex of
/// the caller: while `pause` runs, this function uses nothing that other threads could change.
std::expected<StorageTraversal::Result, StorageMeasurementFailure>
walkInBatches(StorageTraversal& walk, const WalkBudget& budget, Clock& clock,
              const std::stop_token& stop, WalkBatch& batch, const BatchPause& pause);

/// As above, with a new batch, and with pauses that only wait.
std::expected<StorageTraversal::Result, StorageMeasurementFailure>
walkInBatches(StorageTraversal& walk, const WalkBudget& budget, Clock& clock,
              const std::stop_token& stop);

} // namespace tidemark
