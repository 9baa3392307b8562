#pragma once

#include "platform/linux/MessageBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <functional>
#include <memory>

namespace tidemark {

/// Follows one service of a message bus through its starts, ends and restarts, asks it questions
/// and receives its signals. Does not block. Main thread only.
///
/// Any process may send signals under any path, and a service may be replaced while a question is
/// on its way. So only signals of the present owner of the name are passed on, and replies that
/// arrive after that owner has gone are dropped.
class BusService final : public QObject {
public:
    enum class WhenMissing {
        /// Wait until somebody else starts the service.
        wait,
        /// Ask the bus once to start it.
        start,
    };
    /// Ends when it is destroyed.
    using Subscription = std::unique_ptr<QObject>;
    using Use = std::function<void(const QDBusMessage& message)>;
    using UseValue = std::function<void(const QVariant& value)>;
    using UseValues = std::function<void(const QVariantMap& values)>;

    /// `didChangeOwner` is called from the event loop whenever the service has started, ended or
    /// been replaced; whatever was known about it is then unknown. It is never called without a
    /// bus.
    BusService(const MessageBus& bus, QString name, std::function<void()> didChangeOwner,
               WhenMissing whenMissing = WhenMissing::wait);

    bool isThere() const { return !uniqueName.isEmpty(); }
    /// The unique name of the running service; empty when there is none.
    const QString& owner() const { return uniqueName; }

    /// Calls a method of the running service; a service is never started by this. `use` is called
    /// with the reply or an error, unless the service has ended or been replaced by then. Does
    /// nothing when there is no service.
    void call(const QString& path, const QString& interface, const QString& method,
              const QVariantList& arguments, const Use& use);
    /// `use` is called with an invalid value when the property can't be read.
    void readProperty(const QString& path, const QString& interface, const QString& name,
                      const UseValue& use);
    /// All properties of an interface; `use` is called with none when they can't be read.
    void readProperties(const QString& path, const QString& interface, const UseValues& use);

    /// Calls `handle` with each signal of this name that the running service sends from `path`.
    /// With `firstArgument`, only those whose first argument is this text. The subscription ends
    /// with this owner, so it is to be made again when `didChangeOwner` is called. Null when there
    /// is no service.
    [[nodiscard]] Subscription subscribe(const QString& path, const QString& interface,
                                         const QString& signal, Use handle,
                                         const QString& firstArgument = {});

    // The standard interface of all properties, https://dbus.freedesktop.org/doc.
    static const QString propertiesInterface;
    static const QString propertiesChanged;

private:
    void start(const QDBusConnection& connection, WhenMissing whenMissing);
    void findOwner(WhenMissing whenMissing);
    void askToStart();
    void follow(const QString& newOwner);

    /// Keeps the connection, also while it is being made.
    const MessageBus messageBus;
    /// Invalid until connected.
    QDBusConnection bus{QString()};
    const QString name;
    const std::function<void()> didChangeOwner;
    QDBusServiceWatcher watcher;
    QString uniqueName;
};

namespace detail {

/// Receives one signal of a service. Qt connects signals of a bus only to named slots; one that
/// takes the message is called whatever the types of the arguments.
class BusSignalReceiver final : public QObject {
    Q_OBJECT

public:
    explicit BusSignalReceiver(BusService::Use handle) : handle(std::move(handle)) {}

public Q_SLOTS:
    void receive(const QDBusMessage& signal) const {
        // A copy, because the handler may destroy this object.
        const BusService::Use call = handle;
        call(signal);
    }

private:
    BusService::Use handle;
};

} // namespace detail

} // namespace tidemark
