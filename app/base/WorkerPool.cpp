#include "app/base/WorkerPool.h"

#include "core/base/Error.h"
#include "core/base/StartThread.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace tidemark {

/// Shared with the threads, because they may outlive the pool.
struct WorkerPool::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> waiting;
    std::size_t mostThreads = 0;
    std::chrono::milliseconds idleTime{};
    std::size_t threads = 0;
    /// Number of threads that wait for work, including those that are being woken.
    std::size_t idle = 0;
    bool isEnding = false;

    void takeWork();
};

void WorkerPool::State::takeWork() {
    std::unique_lock lock(mutex);
    while (true) {
        ++idle;
        changed.wait_for(lock, idleTime, [this] { return isEnding || !waiting.empty(); });
        --idle;
        if (waiting.empty())
            break;
        std::function<void()> work = std::move(waiting.front());
        waiting.pop_front();
        lock.unlock();
        work();
        // Destroys the captures of the work, before the mutex is locked.
        work = nullptr;
        lock.lock();
    }
    --threads;
}

WorkerPool::WorkerPool(std::size_t mostThreads, std::chrono::milliseconds idleTime)
    : state(std::make_shared<State>()) {
    state->mostThreads = mostThreads;
    state->idleTime = idleTime;
}

WorkerPool::~WorkerPool() {
    const std::lock_guard lock(state->mutex);
    state->isEnding = true;
    state->changed.notify_all();
}

void WorkerPool::start(std::function<void()> work) {
    const std::lock_guard lock(state->mutex);
    state->waiting.push_back(std::move(work));
    if (state->waiting.size() <= state->idle)
        return state->changed.notify_one();
    if (state->threads == state->mostThreads)
        return;
    try {
        startThread([shared = state] { shared->takeWork(); }).detach();
        ++state->threads;
    } catch (const Error&) {
        // The existing threads will do the work.
        if (state->threads > 0)
            return;
        state->waiting.pop_back();
        throw;
    }
}

} // namespace tidemark
