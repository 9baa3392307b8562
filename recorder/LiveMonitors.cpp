#include "recorder/LiveMonitors.h"

#include <algorithm>
#include <iterator>

namespace tidemark {

std::vector<ActivityMonitor*> LiveMonitors::inOrder() const {
    std::vector<ActivityMonitor*> all;
    for (const auto& monitor : monitors.all)
        all.push_back(monitor.get());
    return all;
}

std::set<SettingSource> LiveMonitors::sources() const {
    std::set<SettingSource> sources;
    for (const auto& monitor : monitors.all)
        sources.insert(monitor->source());
    return sources;
}

std::map<SettingSource, std::string> LiveMonitors::absences() const {
    std::map<SettingSource, std::string> absences;
    for (const auto& monitor : monitors.all)
        if (auto reason = monitor->absence())
            absences.emplace(monitor->source(), *std::move(reason));
    return absences;
}

std::vector<MonitorStatus> LiveMonitors::statuses() const {
    std::vector<MonitorStatus> all;
    for (const auto& monitor : monitors.all)
        std::ranges::move(monitor->statuses(), std::back_inserter(all));
    return all;
}

void LiveMonitors::announceChangesTo(Observable& observer) const {
    for (const auto& monitor : monitors.all)
        QObject::connect(monitor.get(), &Observable::changed, &observer, &Observable::noteChange);
}

} // namespace tidemark
