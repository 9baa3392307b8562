#include "platform/linux/NetworkManagerWiFi.h"

#include <QDBusArgument>
#include <QDBusObjectPath>

namespace tidemark {

namespace {

const QString serviceName = QStringLiteral("org.freedesktop.NetworkManager");
const QString managerPath = QStringLiteral("/org/freedesktop/NetworkManager");
const QString managerInterface = serviceName;
const QString deviceInterface = QStringLiteral("org.freedesktop.NetworkManager.Device");
/// NM_DEVICE_TYPE_WIFI
constexpr std::uint32_t wifiType = 2;

QString firstPath(const QDBusMessage& signal) {
    return signal.arguments().value(0).value<QDBusObjectPath>().path();
}

} // namespace

NetworkManagerWiFi::NetworkManagerWiFi(const MessageBus& bus, bool withNames,
                                       std::function<void()> changed)
    : withNames(withNames), changed(std::move(changed)),
      service(bus, serviceName, [this] { follow(); }) {}

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
    added = service.subscribe(managerPath, managerInterface, QStringLiteral("DeviceAdded"),
                              [this](const QDBusMessage& signal) { add(firstPath(signal)); });
    removed = service.subscribe(managerPath, managerInterface, QStringLiteral("DeviceRemoved"),
                                [this](const QDBusMessage& signal) {
                                    if (byPath.erase(firstPath(signal)) > 0)
                                        changed();
                                });
    service.readProperty(managerPath, managerInterface, QStringLiteral("Devices"),
                         [this](const QVariant& paths) { use(paths); });
}

void NetworkManagerWiFi::use(const QVariant& paths) {
    for (const auto& path : qdbus_cast<QList<QDBusObjectPath>>(paths))
        add(path.path());
}

void NetworkManagerWiFi::add(const QString& path) {
    service.readProperty(path, deviceInterface, QStringLiteral("DeviceType"),
                         [this, path](const QVariant& type) {
                             if (type.toUInt() == wifiType && !byPath.contains(path))
                                 byPath.emplace(path, std::make_unique<NetworkManagerDevice>(
                                                          service, path, withNames, changed));
                         });
}

} // namespace tidemark
