#pragma once

#include "core/activity/SettledTransition.h"
#include "core/records/SystemActivity.h"

#include <optional>

namespace tidemark {

/// The network path: a difference in anything it tells is a change once it has lasted. Has no
/// clock of its own: each call takes the time.
class NetworkConnectionHistory {
public:
    /// Seconds that a state must stand.
    static constexpr double delay = 2;

    /// Takes one state. True when `settle` is due once `delay` has passed and any wait that still
    /// runs is void; false when it repeats the last one, which leaves a running wait alone.
    bool receive(const NetworkConnectionState& state, Date at);
    /// The record of the change that has settled. The first state to settle makes none.
    std::optional<SystemActivity> settle(Date at);
    /// The next state to settle is a new starting point.
    void reset() { *this = {}; }

private:
    SettledTransition<NetworkConnectionState> tracker{delay};
    std::optional<NetworkConnectionState> sample;
};

} // namespace tidemark
