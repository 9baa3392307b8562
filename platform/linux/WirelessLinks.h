#pragma once

#include "app/ports/WiFiSource.h"
#include "platform/linux/BackgroundReading.h"
#include "platform/linux/KernelRoutes.h"
#include "platform/linux/NetworkManagerWiFi.h"
#include "platform/linux/RoutingWatch.h"

#include <functional>
#include <optional>

namespace tidemark {

/// The Wi-Fi links by NetworkManager, which also knows the networks; for devices that it does not
/// manage and while it does not run, by the kernel. Main thread only.
class WirelessLinks final : public WiFiSource {
public:
    /// `bus` is called by each start. `devices` is the kernel's folder of network devices.
    explicit WirelessLinks(std::function<MessageBus()> bus,
                           const std::filesystem::path& devices = kernelRoutes::deviceFolder);

    bool start(Names names, Receive receive) override;
    void stop() override;

private:
    void publish();

    const std::function<MessageBus()> bus;
    Receive receive;
    std::optional<RoutingWatch> watch;
    std::optional<NetworkManagerWiFi> manager;
    /// Those of the kernel; absent until they have been read.
    std::optional<std::vector<NetworkRoutes::Link>> links;
    BackgroundReading<std::vector<NetworkRoutes::Link>> reading;
};

} // namespace tidemark
