#include "platform/linux/UPowerBattery.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <utility>

namespace tidemark {

namespace {

const QString upowerService = QStringLiteral("org.freedesktop.UPower");
const QString upowerPath = QStringLiteral("/org/freedesktop/UPower");
const QString upowerInterface = QStringLiteral("org.freedesktop.UPower");
const QString batteryInterface = QStringLiteral("org.freedesktop.UPower.Device");

// The properties that a reading depends on. UPower also reports voltages and times, often alone.
// The energy is left out because the percentage changes with it.
const QStringList managerProperties{QStringLiteral("OnBattery")};
const QStringList batteryProperties{QStringLiteral("Type"), QStringLiteral("PowerSupply"),
                                    QStringLiteral("IsPresent"), QStringLiteral("Percentage"),
                                    QStringLiteral("State")};

/// Absent when the property is missing or of another type.
template <class T>
std::optional<T> valueOf(const QVariantMap& properties, const char* name) {
    const QVariant value = properties.value(QLatin1String(name));
    return value.metaType() == QMetaType::fromType<T>() ? std::optional(value.value<T>())
                                                        : std::nullopt;
}

PowerSource::UPowerDevice deviceOf(const QVariantMap& properties) {
    return {
        .type = valueOf<quint32>(properties, "Type"),
        .powerSupply = valueOf<bool>(properties, "PowerSupply"),
        .isPresent = valueOf<bool>(properties, "IsPresent"),
        .percentage = valueOf<double>(properties, "Percentage"),
        .state = valueOf<quint32>(properties, "State"),
        .energy = valueOf<double>(properties, "Energy"),
        .energyFull = valueOf<double>(properties, "EnergyFull"),
    };
}

QStringList pathsIn(const QDBusMessage& reply) {
    QStringList paths;
    for (const auto& path : qdbus_cast<QList<QDBusObjectPath>>(reply.arguments().value(0)))
        paths.push_back(path.path());
    return paths;
}

} // namespace

UPowerBattery::UPowerBattery(const MessageBus& bus, AppClock& clock,
                             std::function<void()> didChange)
    : clock(clock), didChange(std::move(didChange)), delay([this] { read(); }),
      upower(bus, upowerService, [this] { follow(); }, BusService::WhenMissing::start) {}

UPowerBattery::~UPowerBattery() = default;

std::optional<std::string> UPowerBattery::absence() const {
    if (now != State::unavailable)
        return std::nullopt;
    return "UPower, the service that reports batteries, does not run.";
}

void UPowerBattery::follow() {
    if (tasks.isStopping())
        return;
    ++owners;
    subscriptions.clear();
    batteries.clear();
    delay.cancel();
    isReading = false;
    isProvisional = true;
    publish(upower.isThere() ? State::unknown : State::unavailable, std::nullopt);
    if (!upower.isThere())
        return;
    // Before the reading, so that no change is missed.
    subscribe();
    read();
    tasks.start(endProvisionalTime(owners));
}

/// Replaces all subscriptions. Destroying one waits for the thread of the message buses, so this is
/// done only when there are other batteries.
void UPowerBattery::subscribe() {
    subscriptions.clear();
    const auto onManager = [this](const char* signal) {
        readAfter({upowerPath, upowerInterface, QLatin1String(signal)}, {});
    };
    onManager("DeviceAdded");
    onManager("DeviceRemoved");
    readAfter(GuardedSubscription::propertiesOf(upowerPath, upowerInterface), managerProperties);
    for (const QString& path : batteries)
        readAfter(GuardedSubscription::propertiesOf(path, batteryInterface), batteryProperties);
}

/// Reads again after each such signal; where `properties` are given, only after one that is about
/// some of them.
void UPowerBattery::readAfter(const GuardedSubscription::Signal& signal,
                              const QStringList& properties) {
    subscriptions.push_back(std::make_unique<GuardedSubscription>(
        upower, signal,
        [this, properties](const QDBusMessage& message) {
            if (properties.isEmpty() || BusService::isAbout(message, properties))
                delay.request();
        },
        [this] { delay.request(); }));
}

QCoro::Task<void> UPowerBattery::endProvisionalTime(std::uint64_t owner) {
    const auto hold = tasks.hold();
    co_await clock.sleep(provisional, tasks.token());
    if (owner != owners || tasks.isStopping())
        co_return;
    isProvisional = false;
    // A running reading may have begun before the refresh.
    ++rounds;
    isReading = false;
    refresh();
    read();
}

/// Has UPower read the batteries now; otherwise it does so every half a minute or at an event of
/// the kernel.
void UPowerBattery::refresh() {
    for (const QString& path : batteries)
        upower.call(path, batteryInterface, QStringLiteral("Refresh"), {}, [](const auto&) {});
}

void UPowerBattery::read() {
    if (std::exchange(isReading, true)) {
        isOutdated = true;
        return;
    }
    isOutdated = false;
    round = {};
    upower.ask(upowerPath, upowerInterface, QStringLiteral("EnumerateDevices"), {},
               [this, number = ++rounds](const QDBusMessage& reply) {
                   if (number != rounds)
                       return;
                   if (reply.type() == QDBusMessage::ReplyMessage)
                       readDevices(pathsIn(reply));
                   else
                       finish();
               });
}

void UPowerBattery::readDevices(const QStringList& paths) {
    round.missingReplies = static_cast<std::size_t>(paths.size()) + 1;
    const auto number = rounds;
    for (const QString& path : paths)
        upower.readProperties(path, batteryInterface,
                              [this, number, path](const QVariantMap& properties) {
                                  if (number != rounds)
                                      return;
                                  round.devices[path] = properties;
                                  receive();
                              });
    upower.readProperties(upowerPath, upowerInterface,
                          [this, number](const QVariantMap& properties) {
                              if (number != rounds)
                                  return;
                              round.onBattery = valueOf<bool>(properties, "OnBattery");
                              receive();
                          });
}

void UPowerBattery::receive() {
    if (--round.missingReplies == 0)
        finish();
}

void UPowerBattery::finish() {
    isReading = false;
    findBatteries();
    std::vector<PowerSource::UPowerDevice> devices;
    for (const auto& [path, properties] : round.devices)
        devices.push_back(deviceOf(properties));
    if (isOutdated)
        delay.request();
    // The service hangs, is ending, or has not made its objects yet.
    if (!round.onBattery) {
        upower.startOver();
        return publish(State::unknown, std::nullopt);
    }
    if (!isProvisional)
        publish(State::following, PowerSource::combined(devices, round.onBattery));
}

void UPowerBattery::findBatteries() {
    std::set<QString> found;
    for (const auto& [path, properties] : round.devices)
        if (PowerSource::isInternal(deviceOf(properties)))
            found.insert(path);
    if (std::exchange(batteries, found) == found)
        return;
    subscribe();
    // A new battery may have changed after it was read and before its signals were subscribed to.
    delay.request();
}

void UPowerBattery::publish(State state, std::optional<BatteryObservation> reading) {
    // While this object is being destroyed, the event loop may still run.
    if (tasks.isStopping() || (state == now && reading == battery))
        return;
    now = state;
    battery = reading;
    didChange();
}

} // namespace tidemark
