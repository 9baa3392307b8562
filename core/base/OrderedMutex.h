#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace tidemark {

/// A mutex that is granted in the order of the calls to `lock`. With a `std::mutex` a thread that
/// unlocks it and locks it again usually overtakes the threads that wait.
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
    /// The ticket whose holder has the mutex, or gets it next.
    std::uint64_t served = 0;
};

} // namespace tidemark
