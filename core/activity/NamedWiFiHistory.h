#pragma once

#include "core/activity/SettledTransition.h"
#include "core/activity/WiFiObservation.h"
#include "core/records/SystemActivity.h"

#include <optional>

namespace tidemark {

/// The Wi-Fi link and, where it may be read, the name of its network. Has no clock of its own: each
/// call takes the time.
class NamedWiFiHistory {
public:
    /// Seconds that an observation must stand.
    static constexpr double delay = 2;

    /// Takes one observation, absent when the link can't be read. True when `settle` is due once
    /// `delay` has passed and any wait that still runs is void; an absent one leaves nothing to
    /// settle. A name that becomes readable or unreadable says nothing about the link: that is a
    /// new starting point.
    bool receive(std::optional<WiFiObservation> observation, Date at);
    /// The record of the change that has settled. A lost link tells of the network that was left.
    std::optional<SystemActivity> settle(Date at);
    /// The next observation is a new starting point.
    void reset() { *this = {}; }

private:
    bool isStartingPoint(const WiFiObservation& observation) const;

    SettledTransition<WiFiObservation> tracker{delay};
    std::optional<WiFiObservation> sample;
};

} // namespace tidemark
