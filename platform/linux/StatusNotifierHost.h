#pragma once

#include "app/ports/TrayHost.h"
#include "platform/linux/BusService.h"
#include "platform/linux/Rereading.h"

#include <functional>
#include <vector>

namespace tidemark {

/// Whether a host of status notifier items is registered
/// (https://www.freedesktop.org/wiki/Specifications/StatusNotifierItem). The watcher of the session
/// may start long after the program and may be started again. Starts nothing. Main thread only.
class StatusNotifierHost final : public TrayHost {
public:
    StatusNotifierHost(const MessageBus& session, std::function<void(bool isThere)> changed);

private:
    void follow();
    void read();
    void setThere(bool there);

    const std::function<void(bool)> changed;
    bool isThere = false;
    BusService watcher;
    std::vector<BusService::Subscription> subscriptions;
    Rereading rereading{[this] { read(); }};
};

} // namespace tidemark
