#include "platform/linux/GuardedSubscription.h"

#include <QTimer>
#include <utility>

namespace tidemark {

GuardedSubscription::GuardedSubscription(BusService& service, Signal signal, BusService::Use handle,
                                         std::function<void()> missed)
    : service(service), signal(std::move(signal)), handle(std::move(handle)),
      missed(std::move(missed)) {
    subscribe();
}

void GuardedSubscription::subscribe() {
    subscription = service.subscribe(
        signal.path, signal.interface, signal.name,
        [this](const QDBusMessage& message) { receive(message); }, signal.firstArgument);
}

void GuardedSubscription::receive(const QDBusMessage& message) {
    if (!counting.isValid() || counting.hasExpired(1000)) {
        counting.start();
        received = 0;
    }
    if (++received <= mostPerSecond)
        return handle(message);
    // Ends the subscription at the bus, so that the signals do not even reach this process.
    subscription.reset();
    QTimer::singleShot(pauseMilliseconds, this, [this] { resume(); });
}

void GuardedSubscription::resume() {
    counting.invalidate();
    subscribe();
    missed();
}

} // namespace tidemark
