#pragma once

#include "core/records/SystemActivity.h"

#include <optional>

namespace tidemark {

/// Pairs each wake with the sleep before it. Has no clock: each call takes the time.
class SleepHistory {
public:
    /// The record of one notification. That of a wake after a sleep has the interval between them,
    /// unless the clock was set back to before the sleep.
    SystemActivity receive(SystemActivity::Kind kind, Date at,
                           std::optional<BatteryObservation> battery);
    /// Forgets a sleep that has no wake yet.
    void reset() { start.reset(); }

private:
    struct Sleep {
        Date began;
        std::optional<BatteryObservation> battery;
    };

    std::optional<Sleep> start;
};

} // namespace tidemark
