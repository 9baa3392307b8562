#include "platform/linux/BusService.h"

#include <QDBusArgument>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QPointer>
#include <utility>

namespace tidemark {

namespace {

const QString busName = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");

QDBusMessage busCall(const QString& method, const QVariantList& arguments) {
    auto question = QDBusMessage::createMethodCall(busName, busPath, busName, method);
    question.setArguments(arguments);
    return question;
}

} // namespace

const QString BusService::propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString BusService::propertiesChanged = QStringLiteral("PropertiesChanged");

BusService::BusService(const MessageBus& messageBus, QString name,
                       std::function<void()> didChangeOwner, WhenMissing whenMissing)
    : messageBus(messageBus), name(std::move(name)), didChangeOwner(std::move(didChangeOwner)) {
    messageBus.whenConnected(this, [this, whenMissing](const QDBusConnection& connection) {
        start(connection, whenMissing);
    });
}

void BusService::start(const QDBusConnection& connection, WhenMissing whenMissing) {
    bus = connection;
    watcher.setConnection(bus);
    watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    watcher.addWatchedService(name);
    connect(&watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& newOwner) { follow(newOwner); });
    findOwner(whenMissing);
}

void BusService::findOwner(WhenMissing whenMissing) {
    const auto question = busCall(QStringLiteral("GetNameOwner"), {name});
    auto* reply = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply, whenMissing] {
        reply->deleteLater();
        // If there is an owner already, the change of owner arrived first and is newer.
        if (isThere())
            return;
        // An error means that the name has no owner.
        if (!reply->isError())
            follow(reply->reply().arguments().value(0).toString());
        else if (whenMissing == WhenMissing::start)
            askToStart();
    });
}

void BusService::askToStart() {
    // The reply is not awaited: a start is noticed by the change of owner.
    bus.asyncCall(busCall(QStringLiteral("StartServiceByName"), {name, quint32{0}}));
}

void BusService::follow(const QString& newOwner) {
    if (newOwner == uniqueName)
        return;
    uniqueName = newOwner;
    didChangeOwner();
}

void BusService::call(const QString& path, const QString& interface, const QString& method,
                      const QVariantList& arguments, const Use& use) {
    if (!isThere())
        return;
    // Sent to the unique name, so that the bus does not start a service.
    auto question = QDBusMessage::createMethodCall(uniqueName, path, interface, method);
    question.setArguments(arguments);
    auto* reply = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this,
            [this, reply, use, asked = uniqueName] {
                reply->deleteLater();
                if (asked == uniqueName)
                    use(reply->reply());
            });
}

void BusService::readProperty(const QString& path, const QString& interface, const QString& name,
                              const UseValue& use) {
    call(path, propertiesInterface, QStringLiteral("Get"), {interface, name},
         [use](const QDBusMessage& reply) {
             const bool isThere = reply.type() == QDBusMessage::ReplyMessage;
             use(isThere ? reply.arguments().value(0).value<QDBusVariant>().variant() : QVariant());
         });
}

void BusService::readProperties(const QString& path, const QString& interface,
                                const UseValues& use) {
    call(path, propertiesInterface, QStringLiteral("GetAll"), {interface},
         [use](const QDBusMessage& reply) {
             const bool isThere = reply.type() == QDBusMessage::ReplyMessage;
             use(isThere ? qdbus_cast<QVariantMap>(reply.arguments().value(0)) : QVariantMap());
         });
}

BusService::Subscription BusService::subscribe(const QString& path, const QString& interface,
                                               const QString& signal, Use handle,
                                               const QString& firstArgument) {
    if (!isThere())
        return nullptr;
    auto receiver = std::make_unique<detail::BusSignalReceiver>(
        [self = QPointer(this), asked = uniqueName,
         handle = std::move(handle)](const QDBusMessage& message) {
            if (self && asked == self->uniqueName)
                handle(message);
        });
    const auto matched = firstArgument.isEmpty() ? QStringList() : QStringList{firstArgument};
    if (!bus.connect(uniqueName, path, interface, signal, matched, QString(), receiver.get(),
                     SLOT(receive(QDBusMessage))))
        qWarning("The signal %s can't be followed.", qPrintable(signal));
    return receiver;
}

} // namespace tidemark
