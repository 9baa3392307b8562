#include "core/storage/BatchedWalk.h"

#include "tests/support/ManualClock.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace tidemark;
using test::ManualClock;
using test::TemporaryFolder;
using Failure = StorageMeasurementFailure;

namespace {

/// A folder of 2100 files of one byte, open for walking.
struct BatchedWalk : testing::Test {
    BatchedWalk() {
        const auto file = folder.write("file", "1");
        for (int name = 1; name < 2100; ++name)
            std::filesystem::create_hard_link(file, folder / std::to_string(name));
        walk = StorageTraversal::open(folder.path(), 1'000'000).value();
    }
    auto run(const WalkBudget& budget) {
        return walkInBatches(*walk, budget, clock, stop.get_token());
    }

    TemporaryFolder folder;
    ManualClock clock;
    std::stop_source stop;
    std::optional<StorageTraversal> walk;
};

} // namespace

TEST_F(BatchedWalk, PausesAfterEachBatchOfSteps) {
    EXPECT_EQ(run({}).value().value().bytes, 2100);
    EXPECT_EQ(clock.pauses, 2);
    EXPECT_DOUBLE_EQ(clock.elapsed, 0.002);
}

TEST_F(BatchedWalk, PausesAfterTheTimeOfABatch) {
    clock.readingStep = 0.005;
    std::int64_t firstBatch = 0;
    clock.onPause = [&] { firstBatch = firstBatch ? firstBatch : walk->count(); };
    EXPECT_TRUE(run({}).has_value());
    // The batch starts at the first reading of the clock; the fifth step reaches 25 milliseconds.
    EXPECT_EQ(firstBatch, 5);
}

TEST_F(BatchedWalk, ResumesWhereABudgetEnded) {
    EXPECT_EQ(run({.steps = 1500}).error(), Failure::paused);
    EXPECT_EQ(walk->count(), 1500);
    EXPECT_EQ(clock.pauses, 1);

    clock.readingStep = 0.001;
    EXPECT_EQ(run({.deadline = clock.elapsed + 0.1}).error(), Failure::timeLimit);
    const auto reached = walk->count();
    EXPECT_GT(reached, 1500);
    EXPECT_EQ(run({.deadline = clock.elapsed}).error(), Failure::timeLimit);
    EXPECT_EQ(walk->count(), reached);

    clock.readingStep = 0;
    EXPECT_EQ(run({}).value().value().bytes, 2100);
}

TEST_F(BatchedWalk, StopsWhenCancelled) {
    clock.onPause = [&] { stop.request_stop(); };
    EXPECT_EQ(run({}).error(), Failure::cancelled);
    EXPECT_EQ(walk->count(), 1024);
    EXPECT_EQ(run({}).error(), Failure::cancelled);
    EXPECT_EQ(walk->count(), 1024);
}
