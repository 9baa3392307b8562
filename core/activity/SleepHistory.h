#pragma once

#include "core/records/SystemActivity.h"

#include <optional>

namespace tidemark {

/// Pairs each wake with the sleep before it. Has no clock of its own: each call takes the time.
class SleepHistory {
public:
    /// The record of one notification. A wake that follows a sleep has the interval between the
    /// two, unless the clock was set back before the sleep.
    SystemActivity receive(SystemActivity::Kind kind, Date at,
                           std::optional<BatteryObservation> battery);
    /// Forgets a sleep that still waits for its wake.
    void reset() { start.reset(); }

private:
    struct Sleep {
        Date began;
        std::optional<BatteryObservation> battery;
    };

    std::optional<Sleep> start;
};

} // namespace tidemark
