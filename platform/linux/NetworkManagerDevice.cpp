#include "platform/linux/NetworkManagerDevice.h"

#include "platform/linux/NetworkManagerNames.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QPointer>
#include <algorithm>
#include <memory>
#include <utility>

namespace tidemark {

using NetworkManagerValues::AccessPoint;

namespace {

const QString wirelessInterface = QStringLiteral("org.freedesktop.NetworkManager.Device.Wireless");
const QString pointInterface = QStringLiteral("org.freedesktop.NetworkManager.AccessPoint");
const QString nameProperty = QStringLiteral("Ssid");

struct NumberProperty {
    const char* name;
    std::uint32_t AccessPoint::* member;
};

constexpr NumberProperty numberProperties[] = {
    {"Flags", &AccessPoint::flags},           {"WpaFlags", &AccessPoint::wpaFlags},
    {"RsnFlags", &AccessPoint::rsnFlags},     {"Frequency", &AccessPoint::frequency},
    {"MaxBitrate", &AccessPoint::maxBitrate},
};

bool isNameless(const AccessPoint& point) {
    return !point.ssid || std::ranges::all_of(*point.ssid, [](char byte) { return byte == '\0'; });
}

} // namespace

/// An access point while its properties arrive.
struct NetworkManagerDevice::PointReading {
    AccessPoint point;
    std::size_t missing = 0;
    bool isGone = false;
};

NetworkManagerDevice::NetworkManagerDevice(BusService& service, QString path, bool withName,
                                           std::function<void()> changed)
    : service(service), path(std::move(path)), withName(withName), changed(std::move(changed)) {
    stateChanges.emplace(
        service, GuardedSubscription::propertiesOf(this->path, networkDeviceInterface),
        [this](const QDBusMessage&) { rereading.request(); }, [this] { rereading.request(); });
    rereading.readNow();
}

void NetworkManagerDevice::read() {
    service.readProperties(path, networkDeviceInterface,
                           [self = QPointer(this)](const auto& properties) {
                               if (self)
                                   self->useDevice(properties);
                           });
}

void NetworkManagerDevice::useDevice(const QVariantMap& properties) {
    // The device has just been removed, or can't be read.
    if (properties.isEmpty())
        return rereading.ended();
    next.interface = properties.value(QStringLiteral("Interface")).toString().toStdString();
    next.isUp = NetworkManagerValues::isLinkUp(properties.value(QStringLiteral("State")).toUInt());
    next.point = known ? known->point : std::nullopt;
    if (next.isUp == true)
        return service.readProperties(path, wirelessInterface,
                                      [self = QPointer(this)](const auto& connection) {
                                          if (self)
                                              self->useConnection(connection);
                                      });
    finishWithoutPoint();
}

void NetworkManagerDevice::finishWithoutPoint() {
    next.point.reset();
    pointPath.clear();
    finish();
}

void NetworkManagerDevice::useConnection(const QVariantMap& properties) {
    // While it is an access point for others, the device has joined no network.
    constexpr std::uint32_t accessPointMode = 3;
    if (properties.value(QStringLiteral("Mode")).toUInt() == accessPointMode) {
        next.isUp = false;
        return finishWithoutPoint();
    }
    const auto point =
        properties.value(QStringLiteral("ActiveAccessPoint")).value<QDBusObjectPath>().path();
    if (point.isEmpty() || point == QLatin1String("/"))
        return finish();
    pointPath = point;
    readPoint(point, properties.value(QStringLiteral("Bitrate")).toUInt());
}

/// Reads property by property, since reading all at once would read the name as well.
void NetworkManagerDevice::readPoint(const QString& point, std::uint32_t bitrate) {
    const auto reading = std::make_shared<PointReading>();
    reading->point.bitrate = bitrate;
    const auto read = [&](const QString& name, auto use) {
        ++reading->missing;
        service.readProperty(point, pointInterface, name,
                             [self = QPointer(this), reading, use](const QVariant& value) {
                                 if (!self)
                                     return;
                                 reading->isGone = reading->isGone || !value.isValid();
                                 use(reading->point, value);
                                 if (--reading->missing > 0)
                                     return;
                                 if (!reading->isGone)
                                     self->next.point = reading->point;
                                 self->finish();
                             });
    };
    for (const auto& [name, member] : numberProperties)
        read(QLatin1String(name), [member = member](AccessPoint& to, const QVariant& value) {
            to.*member = value.toUInt();
        });
    if (withName)
        read(nameProperty, [](AccessPoint& to, const QVariant& value) {
            to.ssid = value.toByteArray().toStdString();
        });
}

void NetworkManagerDevice::finish() {
    known = next;
    rereading.ended();
    followPoint();
    changed();
}

void NetworkManagerDevice::followPoint() {
    const bool isComplete =
        next.isUp != true || (next.point && (!withName || !isNameless(*next.point)));
    if (isComplete)
        return pointChanges.clear();
    const QString point = next.point ? pointPath : QString();
    if (!pointChanges.empty() && followedPoint == point)
        return;
    followedPoint = point;
    pointChanges.clear();
    requestWhenChanged(path, wirelessInterface, QStringLiteral("ActiveAccessPoint"));
    if (!point.isEmpty())
        requestWhenChanged(point, pointInterface, nameProperty);
    // What is missing may have changed before the subscription.
    rereading.request();
}

void NetworkManagerDevice::requestWhenChanged(const QString& object, const QString& interface,
                                              const QString& property) {
    const auto handle = [this, property](const QDBusMessage& signal) {
        if (qdbus_cast<QVariantMap>(signal.arguments().value(1)).contains(property))
            rereading.request();
    };
    pointChanges.push_back(std::make_unique<GuardedSubscription>(
        service, GuardedSubscription::propertiesOf(object, interface), handle,
        [this] { rereading.request(); }));
}

} // namespace tidemark
