#pragma once

#include "app/monitors/SwitchedMonitor.h"
#include "app/ports/BluetoothSource.h"
#include "core/activity/BluetoothConnectionHistory.h"
#include "core/activity/BluetoothPowerHistory.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace tidemark {

/// Records when the Bluetooth radio is turned on or off and when paired devices connect or
/// disconnect. Each time the radio is turned on is a new starting point for the devices. Nothing is
/// recorded in the first seconds after a wake, when everything connects again. Main thread only.
class BluetoothActivityMonitor final : public SwitchedMonitor {
public:
    /// Seconds after a wake in which nothing is observed.
    static constexpr double wakeDelay = 5;

    BluetoothActivityMonitor(const Surroundings& surroundings,
                             std::unique_ptr<BluetoothSource> source);
    ~BluetoothActivityMonitor() override;

    Absence absence() const override { return bluetooth->absence(); }

private:
    void follow(Beginning beginning) override;
    void pause() override;
    void receive(const BluetoothSource::State& state);
    /// What prevents following connections; empty when nothing does.
    static std::string_view obstacle(const BluetoothSource::State& state);
    void followDevices(const std::vector<BluetoothDevice>& paired);
    void settleLater(const std::string& address, Date now);
    void forgetConnections();

    const std::unique_ptr<BluetoothSource> bluetooth;
    BluetoothPowerHistory power;
    BluetoothConnectionHistory connections;
    /// A timer for each device whose change is not yet accepted, by the address of the device.
    std::map<std::string, SettlingTimer> timers;
    /// True when the paired devices have been read since the radio is on.
    bool isFollowingDevices = false;
    /// Incremented by every start and stop: states that the source sent before are stale.
    std::uint64_t generation = 0;
};

} // namespace tidemark
