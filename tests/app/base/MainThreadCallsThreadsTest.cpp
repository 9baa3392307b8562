#include "app/base/MainThreadCalls.h"

#include <QCoreApplication>
#include <atomic>
#include <optional>
#include <thread>

#include <gtest/gtest.h>

using namespace tidemark;

TEST(MainThreadCallsThreads, DropCallsOfAnotherThreadAtTheirEnd) {
    std::optional<MainThreadCalls> calls(std::in_place);
    int made = 0;
    // Relaxed, so that these order nothing between the two threads: a lock that the calls lack
    // shows up as a data race.
    std::atomic<int> posted = 0;
    std::atomic<bool> isOver = false;
    std::jthread caller([&, post = calls->post()] {
        while (!isOver.load(std::memory_order_relaxed)) {
            post([&] { ++made; });
            posted.fetch_add(1, std::memory_order_relaxed);
        }
    });
    while (posted.load(std::memory_order_relaxed) < 10)
        std::this_thread::yield();
    calls.reset();
    isOver.store(true, std::memory_order_relaxed);
    caller.join();
    QCoreApplication::processEvents();
    EXPECT_EQ(made, 0);
}
