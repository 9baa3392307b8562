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
    // Of two sleeps with no wake between them the first one began the interval.
    if (kind == SystemActivity::Kind::sleepRequested && !start)
        start = Sleep{at, battery};
    return activity;
}

} // namespace tidemark
