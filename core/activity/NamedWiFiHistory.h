#pragma once

#include "core/activity/SettledTransition.h"
#include "core/activity/WiFiObservation.h"
#include "core/records/SystemActivity.h"

#include <optional>

namespace tidemark {

/// Turns observations of the Wi-Fi link and, where it may be read, the name of its network into
/// records of their changes. The caller passes the time to each call.
class NamedWiFiHistory {
public:
    /// Seconds for which an observation must last.
    static constexpr double delay = 2;

    /// Takes one observation, absent when the link can't be read. When this returns true, the
    /// caller has to cancel any running wait and, if the observation is present, to call `settle`
    /// after `delay`. A name that becomes readable or unreadable makes a new starting point and no
    /// record.
    bool receive(std::optional<WiFiObservation> observation, Date at);
    /// The record of the change that has lasted. The record of a lost link has the name of the
    /// previous network.
    std::optional<SystemActivity> settle(Date at);
    /// Makes the next observation a new starting point.
    void reset() { *this = {}; }

private:
    bool isStartingPoint(const WiFiObservation& observation) const;

    SettledTransition<WiFiObservation> tracker{delay};
    std::optional<WiFiObservation> sample;
};

} // namespace tidemark
