#pragma once

#include <QCoreApplication>
#include <QCoroTask>
#include <QTimer>
#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>

#include <gtest/gtest.h>

/// Functions that run the event loop in a test.
namespace tidemark::test {

/// Handles events until `condition` returns true. Fails the test after a minute.
template <class Condition>
void until(const Condition& condition) {
    bool hangs = false;
    QTimer watchdog;
    watchdog.callOnTimeout([&] { hangs = true; });
    watchdog.start(60'000);
    while (!condition() && !hangs)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    ASSERT_FALSE(hangs) << "the awaited condition was not met";
}

/// Handles the pending events and those that they cause, in ten rounds.
inline void settle() {
    for (int round = 0; round < 10; ++round)
        QCoreApplication::processEvents();
}

namespace detail {

template <class Result>
struct Outcome {
    std::optional<Result> value;
    std::exception_ptr failure;
    bool done = false;
};

template <class T, class Result>
QCoro::Task<void> collect(QCoro::Task<T> task, std::shared_ptr<Outcome<Result>> outcome) {
    try {
        if constexpr (std::is_void_v<T>)
            co_await task;
        else
            outcome->value.emplace(co_await task);
    } catch (...) {
        outcome->failure = std::current_exception();
    }
    outcome->done = true;
}

} // namespace detail

/// Runs the event loop until a coroutine has ended, and returns its result or throws its exception.
/// Throws `std::runtime_error` when it has not ended after a minute.
template <class T>
T await(QCoro::Task<T> task) {
    using Result = std::conditional_t<std::is_void_v<T>, bool, T>;
    const auto outcome = std::make_shared<detail::Outcome<Result>>();
    const auto collecting = detail::collect(std::move(task), outcome);
    until([&] { return outcome->done; });
    if (outcome->failure)
        std::rethrow_exception(outcome->failure);
    if (!outcome->done)
        throw std::runtime_error("the coroutine has not ended");
    if constexpr (!std::is_void_v<T>)
        return std::move(*outcome->value);
}

} // namespace tidemark::test
