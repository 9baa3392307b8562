#include "platform/linux/MessageBus.h"

#include "app/base/Background.h"
#include "app/base/TaskScope.h"
#include "core/base/Error.h"
#include "core/base/StartThread.h"
#include "platform/linux/BusAddress.h"
#include "platform/linux/BusProbe.h"

#include <QLoggingCategory>
#include <QPointer>
#include <optional>
#include <vector>

namespace tidemark {

/// One connection and everything that waits for it.
class MessageBus::Connecting {
public:
    explicit Connecting(const QDBusConnection& connection) : connected(connection) {}

    Connecting(const std::string& address, QDBusConnection (*connect)()) : connect(connect) {
        auto socket = busAddress::localSocket(address);
        if (!socket)
            return;
        probe = std::make_unique<BusProbe>(*std::move(socket), [this](bool isThere) {
            if (isThere)
                tasks.start(connectInBackground());
        });
    }

    void whenConnected(QObject* receiver, Use use) {
        if (!connected)
            waiting.push_back({receiver, std::move(use)});
        else if (connected->isConnected())
            use(*connected);
    }

private:
    struct Waiting {
        QPointer<QObject> receiver;
        Use use;
    };

    QCoro::Task<void> connectInBackground() {
        const auto hold = tasks.hold();
        // Qt handles all buses on one thread and waits for ever if it can't start that. So this
        // first checks that a thread can be started.
        const auto work = [connect = connect](const std::stop_token&) {
            startThread([] {}).join();
            return connect();
        };
        std::optional<QDBusConnection> connection;
        try {
            connection = co_await runInBackground(work);
        } catch (const Error& error) {
            qWarning("A message bus can't be followed. %s", error.what());
        }
        if (!connection || tasks.isStopping())
            co_return;
        connected = connection;
        for (auto& [receiver, use] : std::exchange(waiting, {}))
            if (receiver && connected->isConnected())
                use(*connected);
    }

    QDBusConnection (*const connect)() = nullptr;
    std::optional<QDBusConnection> connected;
    std::vector<Waiting> waiting;
    std::unique_ptr<BusProbe> probe;
    TaskScope tasks;
};

MessageBus::MessageBus(const QDBusConnection& connection)
    : connecting(std::make_shared<Connecting>(connection)) {}

MessageBus MessageBus::shared(std::weak_ptr<Connecting>& existing, const std::string& address,
                              QDBusConnection (*connect)()) {
    auto connecting = existing.lock();
    if (!connecting)
        existing = connecting = std::make_shared<Connecting>(address, connect);
    return MessageBus(std::move(connecting));
}

MessageBus MessageBus::system() {
    static std::weak_ptr<Connecting> existing;
    return shared(existing, busAddress::ofSystem(), QDBusConnection::systemBus);
}

MessageBus MessageBus::session() {
    static std::weak_ptr<Connecting> existing;
    return shared(existing, busAddress::ofSession(), QDBusConnection::sessionBus);
}

void MessageBus::whenConnected(QObject* receiver, Use use) const {
    connecting->whenConnected(receiver, std::move(use));
}

} // namespace tidemark
