#include "core/storage/BatchedWalk.h"

#include <algorithm>

namespace tidemark {

namespace {

constexpr std::int64_t batchSteps = 1024;
constexpr double batchSeconds = 0.025;
constexpr double pauseSeconds = 0.001;

/// Up to `steps` steps, or as many as fit before the clock reaches `deadline`; what is done is
/// taken from `steps`.
std::optional<StorageTraversal::Result> walkBatch(StorageTraversal& walk, std::int64_t& steps,
                                                  double deadline, Clock& clock,
                                                  const std::stop_token& stop) {
    while (steps > 0 && !stop.stop_requested()) {
        --steps;
        if (auto result = walk.step())
            return result;
        // A single step may have waited long for the disk, so the clock is read after each.
        if (clock.monotonicSeconds() >= deadline)
            break;
    }
    return std::nullopt;
}

} // namespace

std::expected<StorageTraversal::Result, StorageMeasurementFailure>
walkInBatches(StorageTraversal& walk, const WalkBudget& budget, Clock& clock,
              const std::stop_token& stop, const BatchPause& pause) {
    std::int64_t stepsLeft = budget.steps;
    while (true) {
        if (stop.stop_requested())
            return std::unexpected(StorageMeasurementFailure::cancelled);
        const double now = clock.monotonicSeconds();
        if (now >= budget.deadline)
            return std::unexpected(StorageMeasurementFailure::timeLimit);

        const std::int64_t granted = std::min(batchSteps, stepsLeft);
        std::int64_t steps = granted;
        if (auto result =
                walkBatch(walk, steps, std::min(now + batchSeconds, budget.deadline), clock, stop))
            return *std::move(result);
        stepsLeft -= granted - steps;
        if (stepsLeft <= 0)
            return std::unexpected(StorageMeasurementFailure::paused);
        if (!pause(pauseSeconds))
            return std::unexpected(StorageMeasurementFailure::cancelled);
    }
}

std::expected<StorageTraversal::Result, StorageMeasurementFailure>
walkInBatches(StorageTraversal& walk, const WalkBudget& budget, Clock& clock,
              const std::stop_token& stop) {
    return walkInBatches(walk, budget, clock, stop,
                         [&](double seconds) { return clock.pause(seconds, stop); });
}

} // namespace tidemark
