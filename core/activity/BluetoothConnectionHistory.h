#pragma once

#include "core/activity/BluetoothDevice.h"
#include "core/activity/SettledTransition.h"
#include "core/records/SystemActivity.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tidemark {

/// The connections of paired devices, each device by itself under its address. Has no clock of its
/// own: each call takes the time.
class BluetoothConnectionHistory {
public:
    /// Seconds that a connection or its end must stand.
    static constexpr double delay = 5;

    /// Follows a device from the state that it is in: a connection that is there already is no
    /// news, and its end has no session.
    void follow(const BluetoothDevice& device);
    /// Takes the news of one device; what is told of a device not followed yet counts as a change.
    /// True when `settle` is due for its address once `delay` has passed and any wait for it that
    /// still runs is void.
    bool receive(const BluetoothDevice& device, Date at);
    /// The record of the change of one device that has settled; the end of a connection whose
    /// start was recorded has its session.
    std::optional<SystemActivity> settle(const std::string& address, Date at);
    /// Forgets all devices but these, and gives the addresses of the forgotten in order.
    std::vector<std::string> keepOnly(const std::set<std::string>& addresses);
    /// Forgets all devices.
    void reset() { devices.clear(); }

private:
    struct Followed {
        SettledTransition<bool> tracker;
        bool sample = false;
        std::string name;
        std::optional<std::string> deviceClass;
        /// Since when a connection stands whose start was recorded.
        std::optional<Date> connectedSince;
    };

    static Followed startingFrom(const BluetoothDevice& device, bool connected);

    std::map<std::string, Followed> devices;
};

} // namespace tidemark
