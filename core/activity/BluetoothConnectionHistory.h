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

/// Turns reports of paired devices into records of their connections, separately for each device,
/// which is identified by its address. The caller passes the time to each call.
class BluetoothConnectionHistory {
public:
    /// Seconds for which a connection or its end must last.
    static constexpr double delay = 5;

    /// Follows a device from its present state on: an existing connection makes no record, and its
    /// end has no session.
    void follow(const BluetoothDevice& device);
    bool isFollowing(const std::string& address) const { return devices.contains(address); }
    /// Takes a report of one device; the first report of a device that is not followed yet counts
    /// as a change. True when the caller has to cancel any running wait for its address and call
    /// `settle` after `delay`.
    bool receive(const BluetoothDevice& device, Date at);
    /// The record of the change of one device that has lasted. The end of a connection has a
    /// session when its start was recorded.
    std::optional<SystemActivity> settle(const std::string& address, Date at);
    /// Stops following all devices but these. Returns the addresses of the others, in order.
    std::vector<std::string> keepOnly(const std::set<std::string>& addresses);
    /// Stops following all devices.
    void reset() { devices.clear(); }

private:
    struct Followed {
        SettledTransition<bool> tracker;
        bool sample = false;
        std::string name;
        std::optional<std::string> deviceClass;
        /// Start of the present connection, if it was recorded.
        std::optional<Date> connectedSince;
    };

    static Followed startingFrom(const BluetoothDevice& device, bool connected);

    std::map<std::string, Followed> devices;
};

} // namespace tidemark
