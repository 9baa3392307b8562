#pragma once

#include "app/base/WorkerPool.h"

#include <QCoroTask>
#include <coroutine>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <type_traits>
#include <utility>

/// Runs blocking work outside of the event loop.
namespace tidemark {

/// Utility work has a low priority; for user-initiated work the user waits.
enum class WorkPriority { utility, userInitiated };

namespace detail {

/// Runs a function on `pool`, or on the common pool of its priority if `pool` is null, and resumes
/// on the main thread.
struct PoolWait {
    // Pointers, because GCC 12 copies an awaiter that is not a temporary: all copies must refer to
    // the same work and the same exception.
    const std::function<void()>* work;
    WorkPriority priority;
    WorkerPool* pool;
    /// Set when the work could not be started.
    std::exception_ptr* refusal;

    bool await_ready() const { return false; }
    bool await_suspend(std::coroutine_handle<> waiting) const;
    void await_resume() const {}
};

/// Runs a function on the common pool for utility work, or on the calling thread when that pool has
/// no thread and none can be started.
void startOnPool(const std::function<void()>& work);

} // namespace detail

/// Calls `work` with `stop` on a thread of `pool`, or of the common pool of the priority if `pool`
/// is null. The awaiting coroutine is resumed on the main thread with the result or the exception
/// of `work`. Throws `Error` without calling `work` when the pool has no thread and none can be
/// started. `work` has to check `stop` itself, and is destroyed on the main thread. A pool of one
/// thread runs its work in the order of the calls.
template <class Work, class Result = std::invoke_result_t<Work&, const std::stop_token&>>
QCoro::Task<Result> runInBackground(Work work, std::stop_token stop = {},
                                    WorkPriority priority = WorkPriority::utility,
                                    WorkerPool* pool = nullptr) {
    struct Nothing {};
    using Stored = std::conditional_t<std::is_void_v<Result>, Nothing, Result>;
    std::optional<Stored> result;
    std::exception_ptr failure;
    const std::function<void()> guarded = [&] {
        try {
            if constexpr (std::is_void_v<Result>)
                work(stop);
            else
                result.emplace(work(stop));
        } catch (...) {
            failure = std::current_exception();
        }
    };
    const detail::PoolWait wait{&guarded, priority, pool, &failure};
    co_await wait;
    if (failure)
        std::rethrow_exception(failure);
    if constexpr (!std::is_void_v<Result>)
        co_return std::move(*result);
}

/// Destroys a large value on a thread of the common pool for utility work.
template <class T>
void releaseInBackground(T value) {
    detail::startOnPool([held = std::make_shared<T>(std::move(value))]() mutable { held.reset(); });
}

} // namespace tidemark
