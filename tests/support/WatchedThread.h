#pragma once

#include <atomic>
#include <fstream>
#include <functional>
#include <string>
#include <thread>

#include <unistd.h>

namespace tidemark::test {

/// A thread for tests: the test can wait until the thread is done or blocked.
class WatchedThread {
public:
    explicit WatchedThread(std::function<void()> work)
        : thread([this, work = std::move(work)] {
              id.store(::gettid(), std::memory_order_relaxed);
              work();
              isDone.store(true, std::memory_order_relaxed);
          }) {}

    /// Returns when the work is done or blocked, such as on a lock. Uses relaxed atomics, so that
    /// ThreadSanitizer sees no synchronisation between the two threads.
    void runUntilItWaits() const {
        // A thread may also sleep for a moment, for example waiting for memory.
        constexpr int longRest = 100;
        for (int looks = 0; !isDone.load(std::memory_order_relaxed) && looks < longRest;) {
            looks = isWaiting() ? looks + 1 : 0;
            std::this_thread::yield();
        }
    }

private:
    bool isWaiting() const {
        const pid_t number = id.load(std::memory_order_relaxed);
        if (number == 0)
            return false;
        // proc(5): the state follows the name of the program, which is in parentheses.
        std::ifstream file("/proc/self/task/" + std::to_string(number) + "/stat");
        std::string line;
        std::getline(file, line);
        const auto name = line.rfind(") ");
        return name != std::string::npos && line.substr(name + 2, 1) == "S";
    }

    std::atomic<pid_t> id = 0;
    std::atomic<bool> isDone = false;
    std::jthread thread;
};

} // namespace tidemark::test
