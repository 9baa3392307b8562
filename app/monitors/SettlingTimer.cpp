#include "app/monitors/SettlingTimer.h"

#include <utility>

namespace tidemark {

void SettlingTimer::start(Date receivedAt, double delay, Settle settle) {
    stop();
    running = std::stop_source();
    tasks.start(wait(clock, running, tasks.token(), receivedAt, delay, std::move(settle)));
}

// A static function, since the callback at the end may destroy the object.
QCoro::Task<void> SettlingTimer::wait(AppClock& clock, std::stop_source source,
                                      std::stop_token ending, Date receivedAt, double delay,
                                      Settle settle) {
    const std::stop_callback onEnd(ending, [source]() mutable { source.request_stop(); });
    const double start = clock.monotonicSeconds();
    double waited = 0;
    while (waited < delay) {
        const bool isWanted = co_await clock.sleep(delay - waited, source.get_token());
        if (!isWanted)
            co_return;
        waited = clock.monotonicSeconds() - start;
    }
    settle(receivedAt + waited);
}

} // namespace tidemark
