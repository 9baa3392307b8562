#pragma once

#include "app/base/Published.h"
#include "app/monitors/ActivityMonitor.h"
#include "app/monitors/SettlingTimer.h"
#include "app/ports/BluetoothSource.h"
#include "core/activity/BluetoothConnectionHistory.h"
#include "core/activity/BluetoothPowerHistory.h"

#include <map>
#include <string>

namespace tidemark {

/// Records when the Bluetooth radio is turned on or off and when paired devices connect or
/// disconnect. Each start, and each time the radio is turned on, is a new starting point. Main
/// thread only.
class BluetoothMonitor {
public:
    /// `source` is null on systems without one. References must outlive this object; the waits are
    /// coroutines of `tasks`.
    BluetoothMonitor(BluetoothSource* source, Published<std::string>& status, AppClock& clock,
                     TaskScope& tasks)
        : source(source), status(status), clock(clock), tasks(tasks) {}
    ~BluetoothMonitor() { stop(); }

    void start(ActivityMonitor::Record record);
    void stop();

private:
    void receive(const BluetoothSource::State& state);
    /// What prevents following connections; empty when nothing does.
    static std::string_view obstacle(const BluetoothSource::State& state);
    void followDevices(const std::vector<BluetoothDevice>& paired);
    void settleLater(const std::string& address, Date now);
    void forgetConnections();

    BluetoothSource* const source;
    Published<std::string>& status;
    AppClock& clock;
    TaskScope& tasks;
    ActivityMonitor::Record record;
    BluetoothPowerHistory power;
    BluetoothConnectionHistory connections;
    /// By address; an entry exists while a change waits.
    std::map<std::string, SettlingTimer> timers;
    /// True when the paired devices have been read since the radio is on.
    bool isFollowingDevices = false;
    bool isStarted = false;
    /// Incremented by every start and stop: states that the source sent before are stale.
    std::uint64_t generation = 0;
};

} // namespace tidemark
