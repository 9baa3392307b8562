#pragma once

#include "platform/linux/NetworkManagerDevice.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace tidemark {

/// The Wi-Fi devices of NetworkManager, while it runs. NetworkManager is not started, nor asked to
/// search for networks. Main thread only.
class NetworkManagerWiFi {
public:
    /// `changed` is called from the event loop.
    NetworkManagerWiFi(const MessageBus& bus, bool withNames, std::function<void()> changed);

    BusService::State state() const { return service.state(); }
    /// The devices that have been read; none while NetworkManager does not run.
    std::vector<NetworkManagerDevice::State> devices() const;

private:
    void follow();
    void use(const QVariant& paths);
    void add(const QString& path);

    const bool withNames;
    const std::function<void()> changed;
    BusService service;
    BusService::Subscription added;
    BusService::Subscription removed;
    std::map<QString, std::unique_ptr<NetworkManagerDevice>> byPath;
};

} // namespace tidemark
