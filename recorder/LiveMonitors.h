#pragma once

#include "app/monitors/BatteryActivityMonitor.h"
#include "app/monitors/ConnectionActivityMonitor.h"
#include "app/monitors/EnvironmentActivityMonitor.h"
#include "app/preferences/SettingSource.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace tidemark {

/// What one monitor observes at present.
struct MonitorStatus {
    /// Such as "Battery".
    std::string name;
    std::string text;

    static constexpr auto fields() {
        return std::tuple{Field{"name", &MonitorStatus::name, Shown},
                          Field{"text", &MonitorStatus::text, Shown}};
    }
};

/// The monitors of live activity with the adapters of this system. They follow nothing before
/// `LiveWiring` starts them. Main thread only.
class LiveMonitors {
public:
    /// Both must outlive the monitors.
    LiveMonitors(Preferences& preferences, NotificationCenter& workspaceCenter);

    /// In the order in which they are started and stopped.
    std::vector<ActivityMonitor*> inOrder();
    QCoro::Task<std::optional<BatteryObservation>> batteryReading() { return battery.reading(); }

    /// The sources that this system has adapters for.
    static std::set<SettingSource> connected();

    std::vector<MonitorStatus> statuses() const;
    /// The sources that were found missing on this machine, each with the reason.
    std::map<SettingSource, std::string> absences() const;
    /// Calls `noteChange` of `observer` whenever a status changes.
    void announceChangesTo(Observable& observer) const;

private:
    EnvironmentActivityMonitor environment;
    BatteryActivityMonitor battery;
    ConnectionActivityMonitor connections;
};

} // namespace tidemark
