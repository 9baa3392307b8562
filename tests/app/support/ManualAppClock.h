#pragma once

#include "app/base/AppClock.h"

#include <QCoreApplication>
#include <algorithm>
#include <coroutine>
#include <memory>
#include <utility>
#include <vector>

namespace tidemark::test {

/// A clock that the test advances. `advance` resumes the coroutines whose sleep ends within the
/// given time, in the order in which it ends.
class ManualAppClock final : public AppClock {
public:
    static constexpr Date start{700'000'000};

    Date now() override { return start + (elapsed + suspended); }
    double monotonicSeconds() override { return elapsed; }

    QCoro::Task<bool> sleep(double seconds, std::stop_token stop, Slack) override {
        if (seconds > 0 && !stop.stop_requested()) {
            const double end = elapsed + seconds - std::exchange(nextWakesEarly, 0);
            const auto sleeper = std::make_shared<Sleeper>(Sleeper{end, {}});
            sleepers.push_back(sleeper);
            std::stop_callback wakeUp(stop, [this, sleeper] {
                QMetaObject::invokeMethod(
                    QCoreApplication::instance(), [this, sleeper] { wake(sleeper); },
                    Qt::QueuedConnection);
            });
            const Suspension suspension{sleeper.get()};
            co_await suspension;
        }
        co_return !stop.stop_requested();
    }

    void advance(double seconds) {
        const double end = elapsed + seconds;
        while (const auto next = firstUntil(end)) {
            elapsed = next->time;
            wake(next);
        }
        elapsed = end;
    }
    /// Changes only the wall time, as a sleep of the machine does. A negative number sets the clock
    /// back.
    void suspend(double seconds) { suspended += seconds; }

    std::size_t sleeping() const { return sleepers.size(); }

    /// Seconds by which the next sleep ends too early, as timers of the system may.
    double nextWakesEarly = 0;

private:
    struct Sleeper {
        double time;
        std::coroutine_handle<> waiting;
    };
    struct Suspension {
        Sleeper* sleeper;
        bool await_ready() const { return false; }
        void await_suspend(std::coroutine_handle<> coroutine) const {
            sleeper->waiting = coroutine;
        }
        void await_resume() const {}
    };
    using Pointer = std::shared_ptr<Sleeper>;

    Pointer firstUntil(double end) const {
        const auto first = std::ranges::min_element(
            sleepers, {}, [](const Pointer& sleeper) { return sleeper->time; });
        return first != sleepers.end() && (*first)->time <= end ? *first : nullptr;
    }
    void wake(const Pointer& sleeper) {
        if (std::erase(sleepers, sleeper) > 0)
            sleeper->waiting.resume();
    }

    double elapsed = 0;
    double suspended = 0;
    std::vector<Pointer> sleepers;
};

} // namespace tidemark::test
