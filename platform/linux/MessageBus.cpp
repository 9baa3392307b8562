#include "platform/linux/MessageBus.h"

#include "app/base/Background.h"
#include "app/base/TaskScope.h"
#include "core/base/Error.h"
#include "core/base/StartThread.h"
#include "platform/linux/BusAddress.h"
#include "platform/linux/BusProbe.h"
#include "platform/linux/PeerSockets.h"

#include <QLoggingCategory>
#include <QPointer>
#include <QTimer>
#include <chrono>
#include <optional>
#include <set>
#include <vector>

namespace tidemark {

namespace {

/// How long the end of the program waits for Qt to connect.
constexpr std::chrono::seconds longestConnecting{1};

/// The addresses of the buses that Qt is connecting to, which it does one after another. Main
/// thread only.
std::multiset<std::string>& connectingTo() {
    static std::multiset<std::string> addresses;
    return addresses;
}

} // namespace

/// One connection and everything that waits for it.
class MessageBus::Connecting {
public:
    explicit Connecting(const QDBusConnection& connection) : connected(connection) {}

    Connecting(const std::string& address, QDBusConnection (*connect)()) : connect(connect) {
        auto socket = busAddress::localSocket(address);
        if (!socket) {
            connected.emplace(QString());
            return;
        }
        probe = std::make_unique<BusProbe>(*std::move(socket), [this](bool isThere) {
            if (isThere)
                tasks.start(connectInBackground());
            else
                finish(QDBusConnection(QString()));
        });
    }

    /// Waits until Qt has connected or failed to. A bus that replied to the probe and hangs now
    /// would delay that by up to 100 seconds. So the connections to all buses that Qt is connecting
    /// to are shut down after `longestConnecting`, and Qt fails.
    ~Connecting() {
        QTimer late;
        late.callOnTimeout([] {
            for (const auto& address : connectingTo())
                peerSockets::shutDown(address);
        });
        late.start(longestConnecting);
        tasks.drain();
    }
    Connecting(const Connecting&) = delete;
    Connecting& operator=(const Connecting&) = delete;

    void whenConnected(QObject* receiver, Use use) {
        if (connected)
            use(*connected);
        else
            waiting.push_back({receiver, std::move(use)});
    }

private:
    struct Waiting {
        QPointer<QObject> receiver;
        Use use;
    };

    /// An address in `connectingTo` for as long as this lives.
    struct Entry {
        explicit Entry(const std::string& address) : place(connectingTo().insert(address)) {}
        ~Entry() { connectingTo().erase(place); }
        Entry(const Entry&) = delete;
        Entry& operator=(const Entry&) = delete;

        const std::multiset<std::string>::iterator place;
    };

    QCoro::Task<void> connectInBackground() {
        const auto hold = tasks.hold();
        // Qt handles all buses on one thread and waits for ever if it can't start that. So this
        // first checks that a thread can be started.
        const auto work = [connect = connect](const std::stop_token&) {
            startThread([] {}).join();
            return connect();
        };
        const Entry entry(probe->peerAddress());
        QDBusConnection connection{QString()};
        try {
            connection = co_await runInBackground(work);
        } catch (const Error& error) {
            qWarning("A message bus can't be followed. %s", error.what());
        }
        if (!tasks.isStopping())
            finish(connection);
    }

    void finish(const QDBusConnection& connection) {
        connected = connection;
        for (const auto& [receiver, use] : std::exchange(waiting, {}))
            if (receiver)
                use(connection);
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
