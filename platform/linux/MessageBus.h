#pragma once

#include <QDBusConnection>
#include <QObject>
#include <functional>
#include <memory>

namespace tidemark {

/// A message bus that the process connects to in the background. If there is no bus or it hangs,
/// the event loop is not delayed. Destroying the last copy while Qt connects to a bus that hangs
/// takes about a second. A bus that does not listen on a local socket counts as none: the program
/// connects to no other machine and starts no bus. A value: copies share one connection. Main
/// thread only.
class MessageBus {
public:
    using Use = std::function<void(const QDBusConnection& connection)>;

    /// The bus of the machine, and that of the user's session. Connecting begins with the first
    /// call; later ones return the same bus for as long as anything uses it.
    static MessageBus system();
    static MessageBus session();
    /// A connection that was made elsewhere; if it is not connected there is no bus.
    MessageBus(const QDBusConnection& connection);

    /// Calls `use` once, unless `receiver` is destroyed before: with the connection, at once or
    /// from the event loop when the bus has replied; or with an invalid connection when there is no
    /// bus. Not called while a bus hangs. `use` must not destroy the last copy of this value.
    void whenConnected(QObject* receiver, Use use) const;

private:
    class Connecting;

    explicit MessageBus(std::shared_ptr<Connecting> connecting)
        : connecting(std::move(connecting)) {}
    static MessageBus shared(std::weak_ptr<Connecting>& existing, const std::string& address,
                             QDBusConnection (*connect)());

    std::shared_ptr<Connecting> connecting;
};

} // namespace tidemark
