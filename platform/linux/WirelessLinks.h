#pragma once

#include "app/ports/WiFiSource.h"
#include "platform/linux/BackgroundReading.h"
#include "platform/linux/KernelRoutes.h"
#include "platform/linux/NetworkManagerWiFi.h"
#include "platform/linux/PathList.h"
#include "platform/linux/RoutingWatch.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace tidemark {

/// The Wi-Fi links by NetworkManager, which also knows the networks; for devices that it does not
/// manage and while it does not run, by the kernel. Main thread only.
class WirelessLinks final : public WiFiSource {
public:
    struct Places {
        /// The kernel's folder of network devices.
        std::filesystem::path devices = kernelRoutes::deviceFolder;
        /// The folders whose files say which services the message bus may have.
        std::vector<std::filesystem::path> dataFolders = systemDataFolders();
    };

    /// `bus` is called by each start.
    WirelessLinks(std::function<MessageBus()> bus, Places places);
    explicit WirelessLinks(std::function<MessageBus()> bus)
        : WirelessLinks(std::move(bus), Places()) {}

    bool start(Names names, Receive receive) override;
    void stop() override;
    std::optional<std::string> namesAbsence() const override;

private:
    void publish();
    bool isManagerInstalled() const;

    const std::function<MessageBus()> bus;
    const std::vector<std::filesystem::path> dataFolders;
    Receive receive;
    std::optional<RoutingWatch> watch;
    std::optional<NetworkManagerWiFi> manager;
    /// The links of the kernel; absent until they have been read.
    std::optional<std::vector<NetworkRoutes::Link>> links;
    BackgroundReading<std::vector<NetworkRoutes::Link>> reading;
};

} // namespace tidemark
