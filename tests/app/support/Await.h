#pragma once

#include <QCoreApplication>
#include <QCoroTask>
#include <QTimer>
#include <exception>
#include <optional>

#include <gtest/gtest.h>

/// Running the event loop in a test: as long as something is awaited, and no longer.
namespace tidemark::test {

/// Handles events until `condition` holds. Fails, instead of hanging, after a minute.
template <class Condition>
void until(const Condition& condition) {
    bool hangs = false;
    QTimer watchdog;
    watchdog.callOnTimeout([&] { hangs = true; });
    watchdog.start(60'000);
    while (!condition() && !hangs)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    ASSERT_FALSE(hangs) << "what the test waits for never came";
}

/// Handles the events that are there now and those that they bring about.
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
QCoro::Task<void> collect(QCoro::Task<T> task, Outcome<Result>* outcome) {
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

/// The result of a coroutine, or what it threw.
template <class T>
T await(QCoro::Task<T> task) {
    detail::Outcome<std::conditional_t<std::is_void_v<T>, bool, T>> outcome;
    const auto collecting = detail::collect(std::move(task), &outcome);
    until([&] { return outcome.done; });
    if (outcome.failure)
        std::rethrow_exception(outcome.failure);
    if constexpr (!std::is_void_v<T>)
        return std::move(*outcome.value);
}

} // namespace tidemark::test
