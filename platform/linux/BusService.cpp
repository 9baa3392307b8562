#include "platform/linux/BusService.h"

#include <QDBusArgument>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QPointer>
#include <algorithm>
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

BusService::BusService(const MessageBus& messageBus, QString name, std::function<void()> didChange,
                       WhenMissing whenMissing)
    : messageBus(messageBus), name(std::move(name)), didChange(std::move(didChange)) {
    pause.setSingleShot(true);
    pause.callOnTimeout(this, [this] { this->didChange(); });
    messageBus.whenConnected(this, [this, whenMissing](const QDBusConnection& connection) {
        start(connection, whenMissing);
    });
}

void BusService::start(const QDBusConnection& connection, WhenMissing whenMissing) {
    bus = connection;
    if (!bus.isConnected()) {
        // Queued, because the constructor may be running.
        QMetaObject::invokeMethod(this, [this] { noteAbsence(); }, Qt::QueuedConnection);
        return;
    }
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
        else
            noteAbsence();
    });
}

void BusService::askToStart() {
    const auto question = busCall(QStringLiteral("StartServiceByName"), {name, quint32{0}});
    auto* reply = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply] {
        reply->deleteLater();
        // A start is noticed by the change of owner.
        if (reply->isError())
            noteAbsence();
    });
}

void BusService::follow(const QString& newOwner) {
    if (newOwner == uniqueName)
        return;
    uniqueName = newOwner;
    pause.stop();
    nextPause = firstPause;
    now = isThere() ? State::running : State::absent;
    didChange();
}

void BusService::noteAbsence() {
    if (now != State::unknown)
        return;
    now = State::absent;
    didChange();
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

void BusService::ask(const QString& path, const QString& interface, const QString& method,
                     const QVariantList& arguments, const Use& use) {
    call(path, interface, method, arguments, [this, use](const QDBusMessage& reply) {
        if (reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.NoReply"))
            startOver();
        use(reply);
    });
}

void BusService::startOver() {
    if (pause.isActive())
        return;
    pause.start(nextPause);
    nextPause = std::min(2 * nextPause, longestPause);
}

void BusService::readProperty(const QString& path, const QString& interface, const QString& name,
                              const UseValue& use) {
    ask(path, propertiesInterface, QStringLiteral("Get"), {interface, name},
        [use](const QDBusMessage& reply) {
            const bool wasRead = reply.type() == QDBusMessage::ReplyMessage;
            use(wasRead ? reply.arguments().value(0).value<QDBusVariant>().variant() : QVariant());
        });
}

void BusService::readProperties(const QString& path, const QString& interface,
                                const UseValues& use) {
    ask(path, propertiesInterface, QStringLiteral("GetAll"), {interface},
        [use](const QDBusMessage& reply) {
            const bool wasRead = reply.type() == QDBusMessage::ReplyMessage;
            use(wasRead ? qdbus_cast<QVariantMap>(reply.arguments().value(0)) : QVariantMap());
        });
}

bool BusService::isAbout(const QDBusMessage& signal, const QStringList& properties) {
    const auto changed = qdbus_cast<QVariantMap>(signal.arguments().value(1));
    const auto invalidated = signal.arguments().value(2).toStringList();
    return std::ranges::any_of(properties, [&](const QString& property) {
        return changed.contains(property) || invalidated.contains(property);
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
    // In this call, and when the receiver is destroyed, Qt waits for the thread in which it handles
    // all messages of the buses. That takes long while many arrive and the processors are busy.
    if (!bus.connect(uniqueName, path, interface, signal, matched, QString(), receiver.get(),
                     SLOT(receive(QDBusMessage))))
        qWarning("The signal %s can't be followed.", qPrintable(signal));
    return receiver;
}

} // namespace tidemark
