#include "app/monitors/NetworkActivityMonitor.h"

#include <utility>

namespace tidemark {

NetworkActivityMonitor::NetworkActivityMonitor(const Surroundings& surroundings, Sources given)
    : SwitchedMonitor(surroundings, {.name = "Network",
                                     .source = SettingSource::network,
                                     .setting = preferenceKeys::networkHistoryEnabled,
                                     .wakeDelay = wakeDelay}),
      sources(std::move(given)), details(preferences(), sources.wifiNames.get()),
      wifi(*sources.wifi, details, clock(), tasks) {}

NetworkActivityMonitor::~NetworkActivityMonitor() {
    end();
}

std::map<SettingSource, ActivityMonitor::Absence> NetworkActivityMonitor::settingSources() const {
    auto all = SwitchedMonitor::settingSources();
    all.emplace(SettingSource::wifiNames, sources.wifi->namesAbsence());
    return all;
}

std::vector<MonitorStatus> NetworkActivityMonitor::statuses() const {
    auto all = SwitchedMonitor::statuses();
    all.push_back({"Wi-Fi", *wifiStatus});
    return all;
}

void NetworkActivityMonitor::follow(Beginning) {
    const auto pass = [this](SystemActivity activity) { record(std::move(activity)); };
    wifiStatus =
        wifi.start(pass) ? "Wi-Fi link observation active" : "Wi-Fi link observation unavailable";
    const auto take = [this, number = ++generation](const NetworkConnectionState& state) {
        if (number == generation)
            receive(state);
    };
    status = sources.path->start(take) ? "Establishing a starting point…"
                                       : "Connection observation unavailable";
}

void NetworkActivityMonitor::pause() {
    ++generation;
    wifi.stop();
    wifiStatus = "Paused";
    sources.path->stop();
    timer.stop();
    history.reset();
}

void NetworkActivityMonitor::receive(const NetworkConnectionState& state) {
    const Date now = clock().now();
    if (!history.receive(state, now))
        return;
    timer.start(now, NetworkConnectionHistory::delay, [this, label = state.label()](Date at) {
        status = "Observing connection changes · " + label;
        if (auto change = history.settle(at))
            record(*std::move(change));
    });
}

} // namespace tidemark
