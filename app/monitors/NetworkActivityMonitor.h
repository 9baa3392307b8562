#pragma once

#include "app/monitors/SwitchedMonitor.h"
#include "app/monitors/WiFiLinkMonitor.h"
#include "app/ports/NetworkPathSource.h"
#include "core/activity/NetworkConnectionHistory.h"

#include <cstdint>
#include <memory>

namespace tidemark {

/// Records changes of the network connection and, by a `WiFiLinkMonitor`, of the Wi-Fi link.
/// Nothing is recorded in the first seconds after a wake, when everything connects again. Main
/// thread only.
class NetworkActivityMonitor final : public SwitchedMonitor {
public:
    /// Seconds after a wake in which nothing is observed.
    static constexpr double wakeDelay = 5;

    struct Sources {
        std::unique_ptr<NetworkPathSource> path;
        std::unique_ptr<WiFiSource> wifi;
        /// Null where names may be read without a permission of the system.
        std::unique_ptr<WiFiNameAccess> wifiNames{};
    };

    NetworkActivityMonitor(const Surroundings& surroundings, Sources sources);
    ~NetworkActivityMonitor() override;

    std::map<SettingSource, Absence> settingSources() const override;
    std::vector<MonitorStatus> statuses() const override;
    Published<std::string> wifiStatus{this, std::string(notYet)};
    /// Knows whether names of networks are recorded.
    const WiFiDetailsProvider& wifiDetails() const { return details; }

private:
    void follow(Beginning beginning) override;
    void pause() override;
    void receive(const NetworkConnectionState& state);

    const Sources sources;
    WiFiDetailsProvider details;
    WiFiLinkMonitor wifi;
    NetworkConnectionHistory history;
    SettlingTimer timer{clock(), tasks};
    /// Incremented by every start and stop: states that the source sent before are stale.
    std::uint64_t generation = 0;
};

} // namespace tidemark
