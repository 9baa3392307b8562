#pragma once

#include "app/base/AppClock.h"
#include "app/base/TaskScope.h"

#include <functional>

namespace tidemark {

/// The wait from an observation to the moment at which its change counts, if it still stands: one
/// for each history of `core/activity` that settles. Main thread only.
///
/// A change is settled once and not asked for again, so settling a hair too early loses it for
/// good. Two things would do that: a timer that ends early, and a clock that was set back while
/// the wait ran. So the wait is measured in monotonic seconds, it goes on until all of them have
/// passed, and the wall clock is not read a second time.
class SettlingTimer {
public:
    /// Called with the time of the observation plus the monotonic seconds waited since: what
    /// `settle` of the history is to be called with.
    using Settle = std::function<void(Date at)>;

    /// Both outlive this. The waits are coroutines of `scope`, and end with it.
    SettlingTimer(AppClock& clock, TaskScope& scope) : time(clock), tasks(scope) {}
    ~SettlingTimer() { stop(); }
    SettlingTimer(const SettlingTimer&) = delete;
    SettlingTimer& operator=(const SettlingTimer&) = delete;

    /// Calls `settle` after `delay` seconds; it may destroy this. A wait that still runs is given
    /// up.
    void start(Date receivedAt, double delay, Settle settle);
    /// `settle` is not called any more.
    void stop() { running.request_stop(); }

private:
    static QCoro::Task<void> wait(AppClock& clock, std::stop_source source, std::stop_token ending,
                                  Date receivedAt, double delay, Settle settle);

    AppClock& time;
    TaskScope& tasks;
    std::stop_source running{std::nostopstate};
};

} // namespace tidemark
