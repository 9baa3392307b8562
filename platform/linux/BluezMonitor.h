#pragma once

#include "app/ports/BluetoothSource.h"
#include "platform/linux/GuardedSubscription.h"
#include "platform/linux/Rereading.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tidemark {

/// Radios and paired devices as BlueZ reports them (org.bluez, its doc/adapter-api.txt and
/// doc/device-api.txt). After each signal that may concern them it reads all objects again, since
/// signals about a device and its adapter arrive in any order. It changes nothing in BlueZ and does
/// not start it. While BlueZ does not run, the state of the radio is not known. Main thread only.
class BluezMonitor final : public BluetoothSource {
public:
    /// `bus` is called by each start.
    explicit BluezMonitor(std::function<MessageBus()> bus) : bus(std::move(bus)) {}

    void start(Receive receive) override;
    void stop() override;
    std::optional<std::string> absence() const override;

private:
    void forget();
    void follow();
    void subscribe();
    void read();
    void use(const QDBusMessage& reply);
    void deviceChanged(const QDBusMessage& signal);
    void objectAdded(const QDBusMessage& signal);
    void objectRemoved(const QDBusMessage& signal);

    const std::function<MessageBus()> bus;
    Receive receive;
    std::optional<BusService> service;
    std::vector<std::unique_ptr<GuardedSubscription>> subscriptions;
    /// Whether the service knows a radio; absent before its answer.
    std::optional<bool> hasAdapter;
    /// The object paths of the radios and of the paired devices.
    QStringList knownPaths;
    Rereading rereading{[this] { read(); }};
};

} // namespace tidemark
