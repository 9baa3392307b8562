#pragma once

#include "core/activity/SettledTransition.h"
#include "core/records/SystemActivity.h"

#include <optional>
#include <vector>

namespace tidemark {

/// Turns readings of the power source and the internal battery into records of their changes. The
/// state at the first reading makes no record. The caller passes the time to each call.
class BatteryHistory {
public:
    /// Seconds for which a reading must last.
    static constexpr double delay = 2;

    /// Takes one reading, absent when there is none. True when the caller has to cancel any running
    /// wait; unless the reading is absent, it then calls `settle` after `delay`.
    bool receive(std::optional<BatteryObservation> observation, Date at);
    /// The records of the change that has lasted: power connected or disconnected, full, low, each
    /// dated by when the change was first seen. Other changes of the percentage make none.
    std::vector<SystemActivity> settle(Date at);
    /// Makes the next reading a new starting point.
    void reset() { *this = {}; }

private:
    using Transition = SettledTransition<BatteryObservation>::Transition;

    struct Charge {
        Date began;
        BatteryObservation battery;
    };

    std::optional<ObservedSession> sessionEnding(const Transition& settled) const;
    void followCharging(const Transition& settled);
    void rearm(const BatteryObservation& after);
    std::vector<BatteryActivity::Kind> kindsToRecord(const Transition& settled);

    SettledTransition<BatteryObservation> tracker{delay};
    std::optional<BatteryObservation> sample;
    /// No further record of a low battery is made until it was charged.
    bool lowRecorded = false;
    bool fullRecorded = false;
    std::optional<Charge> chargingStart;
};

} // namespace tidemark
