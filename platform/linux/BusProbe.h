#pragma once

#include "core/base/FileDescriptor.h"
#include "platform/linux/BusAddress.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>

namespace tidemark {

/// Checks without blocking whether a message bus replies: does the handshake and calls Hello on a
/// connection of its own. Qt connects by blocking calls, which take up to 100 seconds with a bus
/// that accepts connections but hangs, and delay all later connections of the process. Main thread
/// only.
class BusProbe final : public QObject {
public:
    /// `didAnswer` is called once from the event loop: with true when the bus has replied to Hello,
    /// with false when it refused or nothing listens there. It is not called while the bus hangs.
    BusProbe(busAddress::LocalSocket address, std::function<void(bool)> didAnswer);

    /// The address of the bus's end of the connection, as `peerSockets::addressOf` returns it;
    /// empty until the bus has replied.
    const std::string& peerAddress() const { return peer; }

private:
    void connectToBus();
    void receive();
    void end(bool isThere);

    const busAddress::LocalSocket address;
    const std::function<void(bool)> didAnswer;
    FileDescriptor socket;
    std::unique_ptr<QSocketNotifier> notifier;
    /// Starts the first attempt to connect, and another one while the connection queue of the bus
    /// is full.
    QTimer retry;
    std::string received;
    std::string peer;
};

} // namespace tidemark
