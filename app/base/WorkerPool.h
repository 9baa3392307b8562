#pragma once

#include <cstddef>
#include <functional>
#include <memory>

namespace tidemark {

/// Threads that take work in the order in which it was given. One that finds none for a while ends.
///
/// The pool of Qt keeps work that waits for a thread which the system refused to start, and nobody
/// ever does it; this one reports the refusal. Any thread.
class WorkerPool {
public:
    explicit WorkerPool(std::size_t mostThreads);
    /// Does not wait: threads end with the work that was given to them, or with the process.
    ~WorkerPool();
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    /// `work` must not throw. Throws `Error`, and has dropped the work, when the pool has no thread
    /// and none can be started.
    void start(std::function<void()> work);

private:
    struct State;

    std::shared_ptr<State> state;
};

} // namespace tidemark
