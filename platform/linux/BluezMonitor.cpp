#include "platform/linux/BluezMonitor.h"

#include "core/activity/BluetoothObjects.h"
#include "platform/linux/BluetoothPresence.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <algorithm>
#include <array>

namespace tidemark {

namespace {

using Interfaces = QMap<QString, QVariantMap>;
using Objects = QMap<QDBusObjectPath, Interfaces>;

const QString serviceName = QStringLiteral("org.bluez");
const QString root = QStringLiteral("/");
const QString objectManager = QStringLiteral("org.freedesktop.DBus.ObjectManager");
const QString adapterInterface = QStringLiteral("org.bluez.Adapter1");
const QString deviceInterface = QStringLiteral("org.bluez.Device1");
const QString anyPath;

/// The properties that `deviceOf` reads. A search for devices reports others, such as the signal
/// strength, many times a second.
const std::array<QString, 7> usedProperties{QStringLiteral("Address"),   QStringLiteral("Alias"),
                                            QStringLiteral("Connected"), QStringLiteral("Paired"),
                                            QStringLiteral("Bonded"),    QStringLiteral("Class"),
                                            QStringLiteral("Appearance")};

BluetoothObjects::Adapter adapterOf(const QDBusObjectPath& path, const QVariantMap& properties) {
    return {path.path().toStdString(), properties.value(QStringLiteral("Powered")).toBool()};
}

bool isPaired(const QVariantMap& properties) {
    return properties.value(QStringLiteral("Paired")).toBool()
           || properties.value(QStringLiteral("Bonded")).toBool();
}

template <class Number>
std::optional<Number> number(const QVariantMap& properties, const char* name) {
    const QVariant value = properties.value(QLatin1String(name));
    return value.canConvert<Number>() ? std::optional(value.value<Number>()) : std::nullopt;
}

BluetoothObjects::Device deviceOf(const QDBusObjectPath& path, const QVariantMap& properties) {
    const auto text = [&](const char* name) {
        return properties.value(QLatin1String(name)).toString().toStdString();
    };
    return {.path = path.path().toStdString(),
            .address = text("Address"),
            .alias = text("Alias"),
            .isPaired = isPaired(properties),
            .isConnected = properties.value(QStringLiteral("Connected")).toBool(),
            .classOfDevice = number<std::uint32_t>(properties, "Class"),
            .appearance = number<std::uint16_t>(properties, "Appearance")};
}

BluetoothSource::State failed(const QDBusMessage& reply) {
    BluetoothSource::State state;
    if (reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.AccessDenied"))
        state.permission = BluetoothSource::Permission::denied;
    return state;
}

QString firstPath(const QDBusMessage& signal) {
    return signal.arguments().value(0).value<QDBusObjectPath>().path();
}

} // namespace

void BluezMonitor::start(Receive to) {
    stop();
    receive = std::move(to);
    service.emplace(bus(), serviceName, [this] { follow(); });
    QMetaObject::invokeMethod(
        &*service,
        [this] {
            // Unless the service has been found meanwhile.
            if (!service->isThere())
                receive({});
        },
        Qt::QueuedConnection);
}

void BluezMonitor::stop() {
    forget();
    service.reset();
    receive = nullptr;
}

std::optional<std::string> BluezMonitor::absence() const {
    // The running service knows better than the files of the machine.
    if (hasAdapter == true)
        return std::nullopt;
    if (hasAdapter == false)
        return std::string(bluetoothPresence::noAdapter);
    if (auto reason = bluetoothPresence::absence())
        return reason;
    const bool isStopped = service && service->state() == BusService::State::absent;
    return isStopped ? std::optional<std::string>("The Bluetooth service BlueZ does not run.")
                     : std::nullopt;
}

void BluezMonitor::forget() {
    subscriptions.clear();
    rereading.cancel();
    knownPaths.clear();
    hasAdapter.reset();
}

void BluezMonitor::follow() {
    forget();
    // What was known before is out of date.
    receive({});
    if (!service->isThere())
        return;
    subscribe();
    rereading.readNow();
}

void BluezMonitor::subscribe() {
    const auto add = [this](const GuardedSubscription::Signal& signal, BusService::Use use) {
        subscriptions.push_back(std::make_unique<GuardedSubscription>(
            *service, signal, std::move(use), [this] { rereading.request(); }));
    };
    add({root, objectManager, QStringLiteral("InterfacesAdded")},
        [this](const QDBusMessage& signal) { objectAdded(signal); });
    add({root, objectManager, QStringLiteral("InterfacesRemoved")},
        [this](const QDBusMessage& signal) { objectRemoved(signal); });
    add(GuardedSubscription::propertiesOf(anyPath, deviceInterface),
        [this](const QDBusMessage& signal) { deviceChanged(signal); });
    add(GuardedSubscription::propertiesOf(anyPath, adapterInterface),
        [this](const QDBusMessage&) { rereading.request(); });
}

void BluezMonitor::read() {
    service->ask(root, objectManager, QStringLiteral("GetManagedObjects"), {},
                 [this](const QDBusMessage& reply) { use(reply); });
}

void BluezMonitor::use(const QDBusMessage& reply) {
    rereading.ended();
    if (reply.type() != QDBusMessage::ReplyMessage)
        return receive(failed(reply));
    std::vector<BluetoothObjects::Adapter> adapters;
    std::vector<BluetoothObjects::Device> devices;
    knownPaths.clear();
    const auto objects = qdbus_cast<Objects>(reply.arguments().value(0));
    for (auto object = objects.begin(); object != objects.end(); ++object) {
        const auto adapter = object->constFind(adapterInterface);
        const auto device = object->constFind(deviceInterface);
        if (adapter != object->constEnd())
            adapters.push_back(adapterOf(object.key(), *adapter));
        if (device != object->constEnd() && isPaired(*device))
            devices.push_back(deviceOf(object.key(), *device));
        else if (adapter == object->constEnd())
            continue;
        knownPaths.push_back(object.key().path());
    }
    hasAdapter = !adapters.empty();
    receive({.isPoweredOn = BluetoothObjects::isPoweredOn(adapters),
             .paired = BluetoothObjects::pairedDevices(adapters, devices)});
}

void BluezMonitor::deviceChanged(const QDBusMessage& signal) {
    const auto changed = qdbus_cast<QVariantMap>(signal.arguments().value(1));
    const auto invalidated = signal.arguments().value(2).toStringList();
    const bool isUsed = std::ranges::any_of(usedProperties, [&](const QString& name) {
        return changed.contains(name) || invalidated.contains(name);
    });
    if (isUsed)
        rereading.request();
}

void BluezMonitor::objectAdded(const QDBusMessage& signal) {
    // A search adds many devices that are not paired.
    const auto interfaces = qdbus_cast<Interfaces>(signal.arguments().value(1));
    if (interfaces.contains(adapterInterface) || isPaired(interfaces.value(deviceInterface)))
        rereading.request();
}

void BluezMonitor::objectRemoved(const QDBusMessage& signal) {
    if (knownPaths.contains(firstPath(signal)))
        rereading.request();
}

} // namespace tidemark
