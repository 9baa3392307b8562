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

/// Finds out whether a message bus answers: speaks its handshake and the greeting "Hello" on a
/// connection of its own, without ever waiting. Qt connects by calls that block, up to 100 seconds
/// at a bus that accepts connections and is stuck, and all later connections of the process with
/// them. Main thread only.
class BusProbe final : public QObject {
public:
    /// `answered` is called once from the event loop: with true when the bus has answered the
    /// greeting, with false when it refused or nobody listens. Never, as long as the bus is stuck.
    BusProbe(busAddress::LocalSocket bus, std::function<void(bool)> answered);

private:
    void connectToBus();
    void receive();
    void end(bool isThere);

    const busAddress::LocalSocket address;
    const std::function<void(bool)> didAnswer;
    FileDescriptor socket;
    std::unique_ptr<QSocketNotifier> notifier;
    /// Running while the queue of the bus is full.
    QTimer retry;
    std::string received;
};

} // namespace tidemark
