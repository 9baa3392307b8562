#pragma once

#include "core/activity/SettledTransition.h"
#include "core/records/SystemActivity.h"

#include <optional>

namespace tidemark {

/// Turns readings of the Wi-Fi link, as up or down only, into records of its changes.
class WiFiLinkHistory {
public:
    /// Seconds for which a state must last.
    static constexpr double delay = 2;

    /// Takes one state, absent when the link can't be read. True when the caller has to cancel any
    /// running wait; unless the state is absent, it then calls `settle` after `delay`.
    bool receive(std::optional<bool> connected, Date at);
    /// The record of the change that has lasted.
    std::optional<SystemActivity> settle(Date at);
    /// Makes the next state a new starting point.
    void reset() { *this = {}; }

private:
    SettledTransition<bool> tracker{delay};
    std::optional<bool> sample;
};

} // namespace tidemark
