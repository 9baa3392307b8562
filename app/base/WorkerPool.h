#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>

namespace tidemark {

/// Threads that begin work in the order of the calls to `start`. A thread that is idle for a given
/// time ends.
///
/// QThreadPool keeps work forever when the system refuses to start a thread for it; this pool
/// reports the failure. Thread-safe.
class WorkerPool {
public:
    static constexpr std::chrono::milliseconds usualIdleTime = std::chrono::seconds(30);

    explicit WorkerPool(std::size_t mostThreads,
                        std::chrono::milliseconds idleTime = usualIdleTime);
    /// Does not wait: threads end when the given work is done, or with the process.
    ~WorkerPool();
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    /// `work` must not throw. Throws `Error` and drops the work when the pool has no thread and
    /// none can be started.
    void start(std::function<void()> work);

private:
    struct State;

    std::shared_ptr<State> state;
};

} // namespace tidemark
