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
        for (const auto& [source, absence] : monitor->settingSources())
            sources.insert(source);
    return sources;
}

std::map<SettingSource, std::string> LiveMonitors::absences() const {
    std::map<SettingSource, std::string> absences;
    for (const auto& monitor : monitors.all)
        for (auto& [source, absence] : monitor->settingSources())
            if (absence)
                absences.emplace(source, *absence);
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
