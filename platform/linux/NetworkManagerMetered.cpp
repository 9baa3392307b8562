#include "platform/linux/NetworkManagerMetered.h"

#include "core/activity/NetworkManagerValues.h"
#include "platform/linux/NetworkManagerNames.h"

#include <QDBusArgument>
#include <utility>

namespace tidemark {

namespace {

const QString property = QStringLiteral("Metered");

} // namespace

NetworkManagerMetered::NetworkManagerMetered(const MessageBus& bus, std::function<void()> changed)
    : changed(std::move(changed)), service(bus, networkManagerService, [this] { follow(); }) {}

void NetworkManagerMetered::follow() {
    rereading.cancel();
    use({});
    changes.reset();
    if (!service.isThere())
        return;
    changes.emplace(
        service, GuardedSubscription::propertiesOf(networkManagerPath, networkManagerService),
        [this](const QDBusMessage& signal) {
            if (qdbus_cast<QVariantMap>(signal.arguments().value(1)).contains(property))
                rereading.request();
        },
        [this] { rereading.request(); });
    rereading.readNow();
}

void NetworkManagerMetered::read() {
    service.readProperty(networkManagerPath, networkManagerService, property,
                         [this](const QVariant& value) {
                             rereading.ended();
                             use(value);
                         });
}

void NetworkManagerMetered::use(const QVariant& value) {
    const auto before = std::exchange(metered, NetworkManagerValues::isMetered(value.toUInt()));
    if (before != metered)
        changed();
}

} // namespace tidemark
