#pragma once

#include "app/base/TaskScope.h"
#include "platform/linux/BusProbe.h"

#include <QDBusConnection>
#include <functional>
#include <memory>

namespace tidemark {

/// Connects the process to the system bus in the background. If there is no bus or it hangs,
/// neither the event loop nor the end of the process is delayed. Main thread only.
class SystemBus {
public:
    /// `didConnect` is called once from the event loop, when the bus has replied; not at all
    /// without a bus.
    explicit SystemBus(std::function<void(QDBusConnection)> didConnect);
    SystemBus(const SystemBus&) = delete;
    SystemBus& operator=(const SystemBus&) = delete;

private:
    QCoro::Task<void> connect();

    std::function<void(QDBusConnection)> didConnect;
    std::unique_ptr<BusProbe> probe;
    TaskScope tasks;
};

} // namespace tidemark
