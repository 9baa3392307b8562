#include "core/storage/BatchedWalk.h"

#include <algorithm>

namespace tidemark {

namespace {

constexpr std::int64_t batchSteps = 1024;
constexpr double batchSeconds = 0.025;

/// Walks up to `steps` steps, or fewer when the walk ends, the clock reaches `deadline` or a stop
/// is requested, and subtracts the steps done from `steps`. Returns nothing unless the walk ended.
std::optional<StorageTraversal::Result> walkBatch(StorageTraversal& walk, std::int64_t& steps,
                                                  double deadline, Clock& clock,
                                                  const std::stop_token& stop) {
    while (steps > 0 && !stop.stop_requested()) {
        --steps;
        if (auto result = walk.step())
            return result;
        // A single step may wait long for the disk, so the clock is read after each.
        if (clock.monotonicSeconds() >= deadline)
            break;
    }
    return std::nullopt;
}

} // namespace

bool WalkBatch::isOver(double now) const {
    return steps >= batchSteps || (start && now >= *start + batchSeconds);
}

std::expected<StorageTraversal::Result, StorageMeasurementFailure>
walkInBatches(StorageTraversal& walk, const WalkBudget& budget, Clock& clock,
              const std::stop_token& stop, WalkBatch& batch, const BatchPause& pause) {
    std::int64_t stepsLeft = budget.steps;
    while (true) {
        if (stop.stop_requested())
            return std::unexpected(StorageMeasurementFailure::cancelled);
        const double now = clock.monotonicSeconds();
        if (now >= budget.deadline)
            return std::unexpected(StorageMeasurementFailure::timeLimit);

        const double end = batch.start.emplace(batch.start.value_or(now)) + batchSeconds;
        const std::int64_t granted = std::min(batchSteps - batch.steps, stepsLeft);
        std::int64_t steps = granted;
        auto result = walkBatch(walk, steps, std::min(end, budget.deadline), clock, stop);
        batch.steps += granted - steps;
        stepsLeft -= granted - steps;
        if (result)
            return *std::move(result);
        if (stepsLeft <= 0)
            return std::unexpected(StorageMeasurementFailure::paused);
        if (!pause(walkPause))
            return std::unexpected(StorageMeasurementFailure::cancelled);
        batch = {};
    }
}

std::expected<StorageTraversal::Result, StorageMeasurementFailure>
walkInBatches(StorageTraversal& walk, const WalkBudget& budget, Clock& clock,
              const std::stop_token& stop) {
    WalkBatch batch;
    return walkInBatches(walk, budget, clock, stop, batch,
                         [&](double seconds) { return clock.pause(seconds, stop); });
}

} // namespace tidemark
