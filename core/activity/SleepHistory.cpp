#include "core/activity/SleepHistory.h"

#include <utility>

namespace tidemark {

SystemActivity SleepHistory::receive(SystemActivity::Kind kind, Date at,
                                     std::optional<BatteryObservation> battery) {
    auto activity = SystemActivity::observed(kind, at);
    activity.powerObservation = battery;
    if (kind == SystemActivity::Kind::woke) {
        const auto sleep = std::exchange(start, std::nullopt);
        if (sleep && at >= sleep->began)
            activity.observedSession = ObservedSession{sleep->began, at, sleep->battery, battery};
    }
    // If two sleeps follow each other without a wake, the interval began with the first.
    if (kind == SystemActivity::Kind::sleepRequested && !start)
        start = Sleep{at, battery};
    return activity;
}

} // namespace tidemark
