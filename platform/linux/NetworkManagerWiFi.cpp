#include "platform/linux/NetworkManagerWiFi.h"

#include "platform/linux/NetworkManagerNames.h"

#include <QDBusArgument>
#include <QDBusObjectPath>

namespace tidemark {

namespace {

/// NM_DEVICE_TYPE_WIFI
constexpr std::uint32_t wifiType = 2;

QString devicePath(const QDBusMessage& signal) {
    return signal.arguments().value(0).value<QDBusObjectPath>().path();
}

} // namespace

NetworkManagerWiFi::NetworkManagerWiFi(const MessageBus& bus, bool withNames,
                                       std::function<void()> changed)
    : withNames(withNames), changed(std::move(changed)),
      service(bus, networkManagerService, [this] { follow(); }) {}

std::vector<NetworkManagerDevice::State> NetworkManagerWiFi::devices() const {
    std::vector<NetworkManagerDevice::State> states;
    for (const auto& [path, device] : byPath)
        if (device->state())
            states.push_back(*device->state());
    return states;
}

void NetworkManagerWiFi::follow() {
    byPath.clear();
    changed();
    if (!service.isThere())
        return;
    added =
        service.subscribe(networkManagerPath, networkManagerService, QStringLiteral("DeviceAdded"),
                          [this](const QDBusMessage& signal) { add(devicePath(signal)); });
    removed =
        service.subscribe(networkManagerPath, networkManagerService,
                          QStringLiteral("DeviceRemoved"), [this](const QDBusMessage& signal) {
                              if (byPath.erase(devicePath(signal)) > 0)
                                  changed();
                          });
    service.readProperty(networkManagerPath, networkManagerService, QStringLiteral("Devices"),
                         [this](const QVariant& paths) { use(paths); });
}

void NetworkManagerWiFi::use(const QVariant& paths) {
    for (const auto& path : qdbus_cast<QList<QDBusObjectPath>>(paths))
        add(path.path());
}

void NetworkManagerWiFi::add(const QString& path) {
    service.readProperty(path, networkDeviceInterface, QStringLiteral("DeviceType"),
                         [this, path](const QVariant& type) {
                             if (type.toUInt() == wifiType && !byPath.contains(path))
                                 byPath.emplace(path, std::make_unique<NetworkManagerDevice>(
                                                          service, path, withNames, changed));
                         });
}

} // namespace tidemark
