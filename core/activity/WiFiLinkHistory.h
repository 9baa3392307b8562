#pragma once

#include "core/activity/SettledTransition.h"
#include "core/records/SystemActivity.h"

#include <optional>

namespace tidemark {

/// The Wi-Fi link as up or down alone, for where nothing is known of the network.
class WiFiLinkHistory {
public:
    /// Seconds that a state must stand.
    static constexpr double delay = 2;

    /// Takes one state, absent when the link can't be read. False only when it repeats the last
    /// one; otherwise any wait that still runs is void and another may begin.
    bool receive(std::optional<bool> connected, Date at);
    /// The record of the change that has settled.
    std::optional<SystemActivity> settle(Date at);
    /// The next state is a new starting point.
    void reset() { *this = {}; }

private:
    SettledTransition<bool> tracker{delay};
    std::optional<bool> sample;
};

} // namespace tidemark
