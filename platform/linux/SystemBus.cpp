#include "platform/linux/SystemBus.h"

#include "app/base/Background.h"
#include "core/base/Error.h"
#include "core/base/StartThread.h"

#include <QLoggingCategory>
#include <optional>

namespace tidemark {

namespace {

/// Qt serves all buses on one thread, and waits for ever if that was not started.
QDBusConnection connection(const std::stop_token&) {
    startThread([] {}).join();
    return QDBusConnection::systemBus();
}

} // namespace

SystemBus::SystemBus(std::function<void(QDBusConnection)> didConnect)
    : didConnect(std::move(didConnect)) {
    auto socket = busAddress::localSocket(busAddress::ofSystem());
    if (!socket) {
        tasks.start(connect());
        return;
    }
    probe = std::make_unique<BusProbe>(*std::move(socket), [this](bool isThere) {
        if (isThere)
            tasks.start(connect());
    });
}

QCoro::Task<void> SystemBus::connect() {
    std::optional<QDBusConnection> bus;
    try {
        bus = co_await runInBackground(connection);
    } catch (const Error& error) {
        qWarning("The system bus can't be followed. %s", error.what());
    }
    if (bus && bus->isConnected() && !tasks.isStopping())
        didConnect(*bus);
}

} // namespace tidemark
