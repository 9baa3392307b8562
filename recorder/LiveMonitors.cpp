#include "recorder/LiveMonitors.h"

#include "app/ports/SystemServices.h"

namespace tidemark {

LiveMonitors::LiveMonitors(Preferences& preferences, NotificationCenter& workspaceCenter)
    : environment({.preferences = preferences,
                   .workspaceCenter = workspaceCenter,
                   .volumes = systemServices::volumes,
                   .displays = systemServices::displays,
                   .thermal = systemServices::thermalState,
                   .volumeReading = systemServices::volumeReading()}),
      battery({.preferences = preferences,
               .workspaceCenter = workspaceCenter,
               .battery = systemServices::battery,
               .lowPowerMode = systemServices::lowPowerMode}),
      connections({.preferences = preferences,
                   .workspaceCenter = workspaceCenter,
                   .path = systemServices::networkPath(),
                   .wifi = systemServices::wifi(),
                   .wifiNames = systemServices::wifiNameAccess(),
                   .bluetooth = systemServices::bluetooth()}) {}

std::set<SettingSource> LiveMonitors::connected() {
    std::set<SettingSource> sources;
    if (systemServices::hasEnvironment())
        sources.insert(SettingSource::environment);
    if (systemServices::hasPower())
        sources.insert(SettingSource::battery);
    if (systemServices::hasConnections()) {
        sources.insert(SettingSource::network);
        sources.insert(SettingSource::bluetooth);
    }
    return sources;
}

std::vector<ActivityMonitor*> LiveMonitors::inOrder() {
    return {&connections, &environment, &battery};
}

std::vector<MonitorStatus> LiveMonitors::statuses() const {
    return {{"Battery", *battery.status},
            {"Network", *connections.networkStatus},
            {"Wi-Fi", *connections.wifiStatus},
            {"Bluetooth", *connections.bluetoothStatus}};
}

std::map<SettingSource, std::string> LiveMonitors::absences() const {
    std::map<SettingSource, std::string> absences;
    if (auto reason = battery.absence())
        absences[SettingSource::battery] = *std::move(reason);
    return absences;
}

void LiveMonitors::announceChangesTo(Observable& observer) const {
    QObject::connect(&battery, &Observable::changed, &observer, &Observable::noteChange);
    QObject::connect(&connections, &Observable::changed, &observer, &Observable::noteChange);
}

} // namespace tidemark
