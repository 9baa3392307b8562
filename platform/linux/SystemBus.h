#pragma once

#include "app/base/TaskScope.h"
#include "platform/linux/BusProbe.h"

#include <QDBusConnection>
#include <functional>
#include <memory>

namespace tidemark {

/// Connects the process to the message bus of the system, away from the event loop. Without a bus,
/// or with one that is stuck, nothing else is held up, also not the end of the process. Main thread
/// only.
class SystemBus {
public:
    /// `connected` is called once from the event loop, as soon as the bus answers; never without
    /// one.
    explicit SystemBus(std::function<void(QDBusConnection)> connected);
    SystemBus(const SystemBus&) = delete;
    SystemBus& operator=(const SystemBus&) = delete;

private:
    QCoro::Task<void> connect();

    std::function<void(QDBusConnection)> didConnect;
    std::unique_ptr<BusProbe> probe;
    TaskScope tasks;
};

} // namespace tidemark
