#include "platform/linux/PowerProfiles.h"

#include <algorithm>
#include <utility>

namespace tidemark {

PowerProfiles::Name::Name(PowerProfiles& owner, const MessageBus& bus, const QString& name,
                          const char* path)
    : owner(owner), interface(name), path(QLatin1String(path)), delay([this] { read(); }),
      service(bus, name, [this] { follow(); }) {}

void PowerProfiles::Name::follow() {
    delay.cancel();
    properties.clear();
    signal.reset();
    owner.publish();
    if (!service.isThere())
        return;
    // Before the reading, so that no change is missed.
    signal.emplace(
        service, GuardedSubscription::propertiesOf(path, interface),
        [this](const QDBusMessage&) { delay.request(); }, [this] { delay.request(); });
    read();
}

void PowerProfiles::Name::read() {
    service.readProperties(path, interface, [this](const QVariantMap& all) {
        properties = all;
        // The service hangs, is ending, or has not made its objects yet.
        if (all.isEmpty())
            service.startOver();
        owner.publish();
    });
}

PowerProfiles::PowerProfiles(const MessageBus& bus, std::function<void()> didChange)
    : didChange(std::move(didChange)),
      names{std::make_unique<Name>(*this, bus,
                                   QStringLiteral("org.freedesktop.UPower.PowerProfiles"),
                                   "/org/freedesktop/UPower/PowerProfiles"),
            std::make_unique<Name>(*this, bus, QStringLiteral("net.hadess.PowerProfiles"),
                                   "/net/hadess/PowerProfiles")} {}

std::optional<bool> PowerProfiles::isOn() const {
    if (now.profile.isEmpty())
        return std::nullopt;
    return now.profile == QLatin1String("power-saver");
}

void PowerProfiles::publish() {
    const auto preferred = std::ranges::find_if(
        names, [](const auto& name) { return name && name->service.isThere(); });
    State next;
    if (preferred != names.end()) {
        const QVariantMap& properties = (*preferred)->properties;
        next.profile = properties.value(QStringLiteral("ActiveProfile")).toString();
        next.isTooHot = properties.value(QStringLiteral("PerformanceDegraded")).toString()
                        == QLatin1String("high-operating-temperature");
    }
    if (std::exchange(now, next) != next)
        didChange();
}

} // namespace tidemark
