#pragma once

#include "core/activity/SettledTransition.h"
#include "core/records/SystemActivity.h"

#include <optional>

namespace tidemark {

/// Turns states of the network connection into records of its changes. A difference in any field
/// counts once it has lasted, unless it is only that a fact became known or unknown. The caller
/// passes the time to each call.
class NetworkConnectionHistory {
public:
    /// Seconds for which a state must last.
    static constexpr double delay = 2;

    /// Takes one state. True when the caller has to cancel any running wait and call `settle` after
    /// `delay`; false when the state equals the last one, and a running wait goes on.
    bool receive(const NetworkConnectionState& state, Date at);
    /// The record of the change that has lasted. The first state makes none.
    std::optional<SystemActivity> settle(Date at);
    /// Makes the next state a new starting point.
    void reset() { *this = {}; }

private:
    SettledTransition<NetworkConnectionState> tracker{delay};
    std::optional<NetworkConnectionState> sample;
};

} // namespace tidemark
