#include "app/monitors/NetworkMonitor.h"

#include <utility>

namespace tidemark {

NetworkMonitor::NetworkMonitor(NetworkPathSource* path, WiFiSource* wifiSource,
                               WiFiDetailsProvider& wifiDetails, Statuses statuses, AppClock& clock,
                               TaskScope& tasks)
    : path(path), statuses(statuses), clock(clock), timer(clock, tasks),
      wifi(wifiSource, wifiDetails, clock, tasks) {}

NetworkMonitor::~NetworkMonitor() {
    if (isStarted && path)
        path->stop();
}

void NetworkMonitor::start(ActivityMonitor::Record to) {
    stop();
    isStarted = true;
    record = std::move(to);
    statuses.wifi =
        wifi.start(record) ? "Wi-Fi link observation active" : "Wi-Fi link observation unavailable";
    statuses.path = "Establishing a starting point…";
    if (path)
        path->start([this, number = generation](const NetworkConnectionState& state) {
            if (number == generation)
                receive(state);
        });
}

void NetworkMonitor::stop() {
    ++generation;
    wifi.stop();
    statuses.wifi = "Paused";
    if (std::exchange(isStarted, false) && path)
        path->stop();
    timer.stop();
    history.reset();
    record = nullptr;
}

void NetworkMonitor::receive(const NetworkConnectionState& state) {
    const Date now = clock.now();
    if (!history.receive(state, now))
        return;
    timer.start(now, NetworkConnectionHistory::delay, [this, label = state.label()](Date at) {
        statuses.path = "Observing connection changes · " + label;
        if (auto change = history.settle(at))
            record(*std::move(change));
    });
}

} // namespace tidemark
