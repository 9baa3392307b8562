#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace tidemark {

/// A mutex whose callers get it in the order in which they asked. With a `std::mutex` the thread
/// that unlocks it and asks again usually overtakes those that wait.
class OrderedMutex {
public:
    void lock() {
        std::unique_lock own(mutex);
        const std::uint64_t ticket = issued++;
        turn.wait(own, [&] { return ticket == served; });
    }
    void unlock() {
        const std::scoped_lock own(mutex);
        ++served;
        turn.notify_all();
    }

private:
    std::mutex mutex;
    std::condition_variable turn;
    std::uint64_t issued = 0;
    /// The ticket that holds the mutex, or will be the next to.
    std::uint64_t served = 0;
};

} // namespace tidemark
