#pragma once

#include "app/base/Published.h"
#include "app/monitors/WiFiLinkMonitor.h"
#include "app/ports/NetworkPathSource.h"
#include "core/activity/NetworkConnectionHistory.h"

#include <string>

namespace tidemark {

/// Records changes of the network connection and, by a `WiFiLinkMonitor`, of the Wi-Fi link. Each
/// start is a new starting point. Main thread only.
class NetworkMonitor {
public:
    /// Where the monitor publishes what it does.
    struct Statuses {
        Published<std::string>& path;
        Published<std::string>& wifi;
    };

    /// The sources are null on systems without them. All must outlive this object; the waits are
    /// coroutines of `tasks`.
    NetworkMonitor(NetworkPathSource* path, WiFiSource* wifi, WiFiDetailsProvider& wifiDetails,
                   Statuses statuses, AppClock& clock, TaskScope& tasks);
    ~NetworkMonitor();

    void start(ActivityMonitor::Record record);
    void stop();

private:
    void receive(const NetworkConnectionState& state);

    NetworkPathSource* const path;
    const Statuses statuses;
    AppClock& clock;
    ActivityMonitor::Record record;
    NetworkConnectionHistory history;
    SettlingTimer timer;
    WiFiLinkMonitor wifi;
    bool isStarted = false;
    /// Incremented by every start and stop: states that the source sent before are stale.
    std::uint64_t generation = 0;
};

} // namespace tidemark
