#pragma once

#include "app/ports/NetworkPathSource.h"
#include "platform/linux/BackgroundReading.h"
#include "platform/linux/KernelRoutes.h"
#include "platform/linux/NetworkManagerMetered.h"
#include "platform/linux/RoutingWatch.h"

#include <functional>
#include <optional>

namespace tidemark {

/// Reports the network connection that the kernel uses for a packet to the internet. That is right
/// with tunnels as well, and with any network manager or none. NetworkManager is only asked whether
/// the connection costs money. Main thread only.
class KernelNetworkPath final : public NetworkPathSource {
public:
    /// `bus` is called by each start. `devices` is the kernel's folder of network devices.
    explicit KernelNetworkPath(std::function<MessageBus()> bus,
                               const std::filesystem::path& devices = kernelRoutes::deviceFolder);

    bool start(Receive receive) override;
    void stop() override;

private:
    void publish();

    const std::function<MessageBus()> bus;
    Receive receive;
    std::optional<RoutingWatch> watch;
    std::optional<NetworkManagerMetered> metered;
    /// Absent until the routes have been read.
    std::optional<NetworkRoutes::Reading> routes;
    BackgroundReading<NetworkRoutes::Reading> reading;
};

} // namespace tidemark
