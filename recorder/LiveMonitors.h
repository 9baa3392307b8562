#pragma once

#include "app/monitors/SystemMonitors.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace tidemark {

/// The monitors of live activity of this system. They follow nothing before `LiveWiring` starts
/// them. Main thread only.
class LiveMonitors {
public:
    /// Both must outlive the monitors.
    LiveMonitors(const Preferences& preferences, NotificationCenter& workspaceCenter)
        : monitors(systemMonitors::create({preferences, workspaceCenter})) {}

    /// In the order in which they are started and stopped.
    std::vector<ActivityMonitor*> inOrder() const;
    QCoro::Task<std::optional<BatteryObservation>> batteryReading() { return monitors.battery(); }

    /// The sources that this system has monitors for.
    std::set<SettingSource> sources() const;
    /// Those that are missing on this machine, as far as that is known, each with the reason.
    std::map<SettingSource, std::string> absences() const;
    std::vector<MonitorStatus> statuses() const;
    /// Calls `noteChange` of `observer` whenever a status changes.
    void announceChangesTo(Observable& observer) const;

private:
    systemMonitors::Monitors monitors;
};

} // namespace tidemark
