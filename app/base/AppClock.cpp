#include "app/base/AppClock.h"

#include "core/base/Clock.h"

#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <coroutine>
#include <memory>
#include <optional>

namespace tidemark {

namespace {

using std::chrono::milliseconds;

/// Awaits a timer. A requested stop ends the wait early: it lets the timer fire at once, so that
/// the coroutine is resumed by the event loop in this case, too.
class TimerWait {
public:
    TimerWait(milliseconds duration, Qt::TimerType type, const std::stop_token& stop)
        : duration(duration), stop(stop) {
        timer->setSingleShot(true);
        timer->setTimerType(type);
    }

    // GCC 12 copies an awaiter that is not a temporary, so this one is only a pointer.
    auto operator co_await() {
        struct Awaiter {
            TimerWait* wait;
            bool await_ready() const { return false; }
            void await_suspend(std::coroutine_handle<> waiting) const { wait->start(waiting); }
            void await_resume() const {}
        };
        return Awaiter{this};
    }

private:
    void start(std::coroutine_handle<> waiting) {
        timer->callOnTimeout([waiting] { waiting.resume(); });
        timer->start(duration);
        wakeUp.emplace(stop, WakeUp{timer.get()});
    }

    struct WakeUp {
        QTimer* timer;
        void operator()() const { timer->start(milliseconds(0)); }
    };

    const milliseconds duration;
    const std::stop_token stop;
    // The coroutine is resumed within the timer's signal and destroys this object.
    std::unique_ptr<QTimer, QScopedPointerDeleteLater> timer{new QTimer};
    std::optional<std::stop_callback<WakeUp>> wakeUp;
};

class SystemAppClock final : public AppClock {
public:
    Date now() override { return Date::now(); }
    double monotonicSeconds() override { return Clock::system().monotonicSeconds(); }
    QCoro::Task<bool> sleep(double seconds, std::stop_token stop, Slack slack) override {
        // A QTimer can wait for at most about 24 days.
        constexpr double longest = 1'000'000;
        for (double left = seconds; left > 0 && !stop.stop_requested(); left -= longest) {
            const milliseconds time(std::llround(std::ceil(std::min(left, longest) * 1000)));
            TimerWait wait(time, slack == Slack::allowed ? Qt::VeryCoarseTimer : Qt::PreciseTimer,
                           stop);
            co_await wait;
        }
        co_return !stop.stop_requested();
    }
};

} // namespace

AppClock& AppClock::system() {
    static SystemAppClock clock;
    return clock;
}

} // namespace tidemark
