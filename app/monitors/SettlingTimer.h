#pragma once

#include "app/base/AppClock.h"
#include "app/base/TaskScope.h"

#include <functional>

namespace tidemark {

/// Waits from an observation until its change counts, for one history of `core/activity`. Main
/// thread only.
///
/// `settle` of a history is called only once for a change, so calling it slightly too early loses
/// the change. That could happen with a timer that ends early, or when the clock is set back during
/// the wait. So the wait is measured in monotonic seconds and continues until all of them have
/// passed, and the wall clock is not read again.
class SettlingTimer {
public:
    /// Called with the argument for `settle` of the history: the time of the observation plus the
    /// monotonic seconds since then.
    using Settle = std::function<void(Date at)>;

    /// Both must outlive this object. The waits are coroutines of `tasks` and end with it.
    SettlingTimer(AppClock& clock, TaskScope& tasks) : clock(clock), tasks(tasks) {}
    ~SettlingTimer() { stop(); }
    SettlingTimer(const SettlingTimer&) = delete;
    SettlingTimer& operator=(const SettlingTimer&) = delete;

    /// Calls `settle` after `delay` seconds; it may destroy this object. Cancels a running wait.
    void start(Date receivedAt, double delay, Settle settle);
    /// Cancels a running wait.
    void stop() { running.request_stop(); }

private:
    static QCoro::Task<void> wait(AppClock& clock, std::stop_source source, std::stop_token ending,
                                  Date receivedAt, double delay, Settle settle);

    AppClock& clock;
    TaskScope& tasks;
    std::stop_source running{std::nostopstate};
};

} // namespace tidemark
