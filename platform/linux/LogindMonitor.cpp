#include "platform/linux/LogindMonitor.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <utility>

#include <unistd.h>

namespace tidemark {

namespace {

const QString service = QStringLiteral("org.freedesktop.login1");
const QString managerPath = QStringLiteral("/org/freedesktop/login1");
const QString managerInterface = QStringLiteral("org.freedesktop.login1.Manager");
const QString sessionInterface = QStringLiteral("org.freedesktop.login1.Session");
const QString userInterface = QStringLiteral("org.freedesktop.login1.User");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString activeProperty = QStringLiteral("Active");

QString pathIn(const QDBusMessage& reply) {
    return reply.arguments().value(0).value<QDBusObjectPath>().path();
}

/// The object path in a pair of an identifier and a path; empty for the path of no object.
QString pathInPair(const QVariant& value) {
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(so)"))
        return {};
    QString id;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> id >> path;
    argument.endStructure();
    return id.isEmpty() ? QString() : path.path();
}

} // namespace

LogindMonitor::LogindMonitor(const QDBusConnection& bus, NotificationCenter& center, Settle settle,
                             AppClock& clock)
    : bus(bus), center(center), settle(std::move(settle)), clock(clock),
      watcher(service, bus, QDBusServiceWatcher::WatchForOwnerChange) {
    if (!bus.isConnected())
        return;
    connect(&watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& newOwner) { follow(newOwner); });
    auto question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetNameOwner"));
    question << service;
    auto* reply = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply] {
        reply->deleteLater();
        // An error means that the name has no owner. If `owner` is set already, a change of owner
        // arrived first and is newer.
        if (!reply->isError() && owner.isEmpty())
            follow(reply->reply().arguments().value(0).toString());
    });
}

LogindMonitor::~LogindMonitor() {
    if (!owner.isEmpty())
        setSubscribed(false);
    leaveSession();
    // Settling may run the event loop, and logind must not be followed again then.
    watcher.disconnect(this);
    owner.clear();
    tasks.drain();
}

void LogindMonitor::follow(const QString& newOwner) {
    if (newOwner == owner)
        return;
    if (!owner.isEmpty())
        setSubscribed(false);
    leaveSession();
    owner = newOwner;
    delayLock = {};
    abandonSleep();
    if (owner.isEmpty())
        return;
    setSubscribed(true);
    takeDelayLock();
    readProperty(managerPath, managerInterface, QStringLiteral("PreparingForSleep"),
                 [this](const QVariant& value) { setPreparingForSleep(value.toBool()); });
    findSession();
}

void LogindMonitor::setSubscribed(bool subscribed) {
    const auto toggle = [&](const char* signal, const char* slot) {
        const QString name = QLatin1String(signal);
        if (!subscribed)
            bus.disconnect(owner, managerPath, managerInterface, name, this, slot);
        else if (!bus.connect(owner, managerPath, managerInterface, name, this, slot))
            qWarning("The signal %s can't be followed.", signal);
    };
    toggle("PrepareForSleep", SLOT(setPreparingForSleep(bool)));
    toggle("PrepareForShutdown", SLOT(prepareForShutdown(bool)));
    toggle("SessionNew", SLOT(sessionAdded()));
    toggle("SessionRemoved", SLOT(sessionRemoved(QDBusMessage)));
}

void LogindMonitor::setPreparingForSleep(bool preparing) {
    if (std::exchange(isPreparingForSleep, preparing) == preparing)
        return;
    ++sleeps;
    isReadyToSleep = false;
    center.post(preparing ? notification::willSleep : notification::didWake);
    if (!preparing)
        return takeDelayLock();
    tasks.start(settleForSleep(sleeps));
    tasks.start(limitDelay(sleeps));
}

void LogindMonitor::abandonSleep() {
    if (!std::exchange(isPreparingForSleep, false))
        return;
    ++sleeps;
    isReadyToSleep = false;
    center.post(notification::sleepAbandoned);
}

void LogindMonitor::takeDelayLock() {
    call(managerPath, managerInterface, QStringLiteral("Inhibit"),
         {QStringLiteral("sleep"), QStringLiteral("Tidemark"),
          QStringLiteral("Write down what happened until then"), QStringLiteral("delay")},
         [this](const QDBusMessage& reply) {
             // If the preparations are finished by now, the sleep must not wait for this lock.
             if (!isReadyToSleep)
                 delayLock = reply.arguments().value(0).value<QDBusUnixFileDescriptor>();
         });
}

QCoro::Task<void> LogindMonitor::settleForSleep(std::uint64_t sleep) {
    try {
        co_await settle();
    } catch (const std::exception& error) {
        qWarning("Before the sleep of the machine: %s", error.what());
    }
    releaseDelay(sleep);
}

QCoro::Task<void> LogindMonitor::limitDelay(std::uint64_t sleep) {
    co_await clock.sleep(mostDelay, tasks.token());
    releaseDelay(sleep);
}

void LogindMonitor::releaseDelay(std::uint64_t sleep) {
    if (sleep != sleeps)
        return;
    isReadyToSleep = true;
    delayLock = {};
}

void LogindMonitor::prepareForShutdown(bool preparing) {
    if (preparing)
        center.post(notification::willPowerOff);
}

void LogindMonitor::sessionAdded() {
    if (session.isEmpty())
        findSession();
}

void LogindMonitor::sessionRemoved(const QDBusMessage& signal) {
    if (signal.arguments().value(1).value<QDBusObjectPath>().path() != session)
        return;
    leaveSession();
    findSession();
}

void LogindMonitor::findSession() {
    call(managerPath, managerInterface, QStringLiteral("GetSessionByPID"),
         {QVariant::fromValue(static_cast<quint32>(::getpid()))}, [this](const auto& reply) {
             if (reply.type() == QDBusMessage::ReplyMessage)
                 followSession(pathIn(reply));
             else
                 findDisplaySession();
         });
}

void LogindMonitor::findDisplaySession() {
    call(managerPath, managerInterface, QStringLiteral("GetUser"),
         {QVariant::fromValue(static_cast<quint32>(::getuid()))}, [this](const auto& reply) {
             if (reply.type() != QDBusMessage::ReplyMessage)
                 return;
             readProperty(pathIn(reply), userInterface, QStringLiteral("Display"),
                          [this](const QVariant& value) { followSession(pathInPair(value)); });
         });
}

void LogindMonitor::followSession(const QString& path) {
    // Two searches may have run at the same time.
    if (path.isEmpty() || !session.isEmpty())
        return;
    session = path;
    bus.connect(owner, session, propertiesInterface, QStringLiteral("PropertiesChanged"), this,
                SLOT(sessionChanged(QString, QVariantMap, QStringList)));
    readSessionActive();
}

void LogindMonitor::leaveSession() {
    if (session.isEmpty())
        return;
    bus.disconnect(owner, session, propertiesInterface, QStringLiteral("PropertiesChanged"), this,
                   SLOT(sessionChanged(QString, QVariantMap, QStringList)));
    session.clear();
}

void LogindMonitor::sessionChanged(const QString& interface, const QVariantMap& changed,
                                   const QStringList& invalidated) {
    if (interface != sessionInterface)
        return;
    if (const auto active = changed.constFind(activeProperty); active != changed.constEnd())
        setSessionActive(active->toBool());
    else if (invalidated.contains(activeProperty))
        readSessionActive();
}

void LogindMonitor::readSessionActive() {
    readProperty(session, sessionInterface, activeProperty,
                 [this, asked = session](const QVariant& value) {
                     if (asked != session)
                         return;
                     // The session has just ended. The next one is looked up when it begins.
                     if (!value.isValid())
                         return leaveSession();
                     setSessionActive(value.toBool());
                 });
}

void LogindMonitor::setSessionActive(bool active) {
    // The state from before logind restarted, or of an earlier session, is kept: only a change is
    // posted, and the first reading is not a change.
    const auto before = std::exchange(isSessionActive, active);
    if (before && *before != active)
        center.post(active ? notification::sessionDidBecomeActive
                           : notification::sessionDidResignActive);
}

void LogindMonitor::call(const QString& path, const QString& interface, const QString& method,
                         const QVariantList& arguments, const Use& use) {
    // Sent to the unique name, so that the bus does not start a service.
    auto question = QDBusMessage::createMethodCall(owner, path, interface, method);
    question.setArguments(arguments);
    auto* reply = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply, use, asked = owner] {
        reply->deleteLater();
        if (asked == owner)
            use(reply->reply());
    });
}

void LogindMonitor::readProperty(const QString& path, const QString& interface, const QString& name,
                                 const std::function<void(const QVariant&)>& use) {
    call(path, propertiesInterface, QStringLiteral("Get"), {interface, name},
         [use](const QDBusMessage& reply) {
             const bool isThere = reply.type() == QDBusMessage::ReplyMessage;
             use(isThere ? reply.arguments().value(0).value<QDBusVariant>().variant() : QVariant());
         });
}

} // namespace tidemark
