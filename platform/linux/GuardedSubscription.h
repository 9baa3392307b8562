#pragma once

#include "platform/linux/BusService.h"

#include <QElapsedTimer>
#include <functional>

namespace tidemark {

/// Receives signals of a service like `BusService::subscribe`, but not a flood of them: after too
/// many within a second it unsubscribes for a while. Main thread only.
class GuardedSubscription final : public QObject {
public:
    static constexpr int mostPerSecond = 100;
    static constexpr int pauseMilliseconds = 500;

    struct Signal {
        /// Empty for all objects.
        QString path;
        QString interface;
        QString name;
        /// Only signals with this first argument, unless empty.
        QString firstArgument{};
    };

    /// The changes of an object's properties of one interface; with an empty path, of all objects.
    static Signal propertiesOf(const QString& path, const QString& interface) {
        return {path, BusService::propertiesInterface, BusService::propertiesChanged, interface};
    }

    /// `handle` is called with each signal, and `missed` after each pause, in which some may have
    /// been lost. This object is to be made again when the service has another owner. `service`
    /// must outlive this object.
    GuardedSubscription(BusService& service, Signal signal, BusService::Use handle,
                        std::function<void()> missed);

private:
    void subscribe();
    void receive(const QDBusMessage& message);
    void resume();

    BusService& service;
    const Signal signal;
    const BusService::Use handle;
    const std::function<void()> missed;
    BusService::Subscription subscription;
    /// Started by the first of the signals that `received` counts.
    QElapsedTimer counting;
    /// The number of signals since `counting` was started, which is at most a second ago.
    int received = 0;
};

} // namespace tidemark
