#pragma once

#include "platform/linux/GuardedSubscription.h"
#include "platform/linux/Rereading.h"

#include <functional>
#include <optional>

namespace tidemark {

/// Whether the present connection costs money, as NetworkManager reports it. Main thread only.
class NetworkManagerMetered {
public:
    /// `changed` is called from the event loop.
    NetworkManagerMetered(const MessageBus& bus, std::function<void()> changed);

    /// Absent when NetworkManager does not run or does not know.
    std::optional<bool> value() const { return metered; }

private:
    void follow();
    void read();
    void use(const QVariant& value);

    const std::function<void()> changed;
    std::optional<bool> metered;
    BusService service;
    std::optional<GuardedSubscription> changes;
    Rereading rereading{[this] { read(); }};
};

} // namespace tidemark
