#pragma once

#include "core/activity/SettledTransition.h"
#include "core/records/SystemActivity.h"

#include <optional>
#include <vector>

namespace tidemark {

/// The power source and the internal battery: which of their changes are news. A state that is
/// already reached at the starting point never is. Has no clock of its own: each call takes the
/// time.
class BatteryHistory {
public:
    /// Seconds that a reading must stand.
    static constexpr double delay = 2;

    /// Takes one reading, absent when there is none. True when `settle` is due once `delay` has
    /// passed and any wait that still runs is void; an absent reading leaves nothing to settle.
    bool receive(std::optional<BatteryObservation> observation, Date at);
    /// The records of what has settled: power connected or gone, full, low, all dated by when the
    /// change was first seen. A plain step of the percentage makes none.
    std::vector<SystemActivity> settle(Date at);
    /// The next reading is a new starting point.
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
    std::vector<BatteryActivity::Kind> news(const Transition& settled);

    SettledTransition<BatteryObservation> tracker{delay};
    std::optional<BatteryObservation> sample;
    /// Spent until rearmed.
    bool lowRecorded = false;
    bool fullRecorded = false;
    std::optional<Charge> chargingStart;
};

} // namespace tidemark
