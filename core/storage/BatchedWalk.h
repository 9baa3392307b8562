#pragma once

#include "core/base/Clock.h"
#include "core/storage/StorageTraversal.h"

#include <functional>
#include <limits>
#include <stop_token>

namespace tidemark {

/// How long one run of a walk may take.
struct WalkBudget {
    /// On the monotonic clock of the run.
    double deadline = std::numeric_limits<double>::infinity();
    std::int64_t steps = std::numeric_limits<std::int64_t>::max();
};

/// Waits `seconds` between two batches. False when the run was cancelled meanwhile.
using BatchPause = std::function<bool(double seconds)>;

/// Walks on in batches of at most 1024 steps or 25 milliseconds with a millisecond of rest between
/// them, so that a background measurement holds neither the disk nor a core.
///
/// The value is the result that the walk came to itself, good or bad: it is over. The error says
/// why it was left where it stands, ready to be resumed by another call: `cancelled`, `timeLimit`
/// (the deadline; the walk is not touched when it has passed already) or `paused` (the steps of
/// the budget are used up).
///
/// `pause` is called without anything held by this function, so a caller can give up a lock in it.
std::expected<StorageTraversal::Result, StorageMeasurementFailure>
walkInBatches(StorageTraversal& walk, const WalkBudget& budget, Clock& clock,
              const std::stop_token& stop, const BatchPause& pause);

/// The same with nothing to give up in the pauses.
std::expected<StorageTraversal::Result, StorageMeasurementFailure>
walkInBatches(StorageTraversal& walk, const WalkBudget& budget, Clock& clock,
              const std::stop_token& stop);

} // namespace tidemark
