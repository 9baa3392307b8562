#include "app/base/WorkerPool.h"

#include <atomic>
#include <cstddef>
#include <latch>
#include <optional>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

using namespace tidemark;

TEST(WorkerPoolThreads, DoesAllWorkOfSeveralThreads) {
    constexpr std::ptrdiff_t callers = 4;
    constexpr std::ptrdiff_t calls = 100;
    std::latch done(callers * calls);
    {
        WorkerPool pool(3);
        std::vector<std::jthread> threads;
        for (int caller = 0; caller < callers; ++caller)
            threads.emplace_back([&] {
                for (int call = 0; call < calls; ++call)
                    pool.start([&] { done.count_down(); });
            });
        threads.clear();
        done.wait();
    }
    // A pool ends while its thread begins to wait for work. The test itself waits by relaxed
    // atomics, which order nothing between threads, so that a lock that the pool lacks shows up as
    // a data race.
    std::optional<WorkerPool> ending(1);
    std::atomic<bool> isDone = false;
    ending->start([&] { isDone.store(true, std::memory_order_relaxed); });
    while (!isDone.load(std::memory_order_relaxed))
        std::this_thread::yield();
    ending.reset();
}
