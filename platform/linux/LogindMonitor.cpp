#include "platform/linux/LogindMonitor.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <utility>

#include <unistd.h>

namespace tidemark {

namespace {

const QString service = QStringLiteral("org.freedesktop.login1");
const QString managerPath = QStringLiteral("/org/freedesktop/login1");
const QString managerInterface = QStringLiteral("org.freedesktop.login1.Manager");
const QString sessionInterface = QStringLiteral("org.freedesktop.login1.Session");
const QString userInterface = QStringLiteral("org.freedesktop.login1.User");
const QString activeProperty = QStringLiteral("Active");

QString pathIn(const QDBusMessage& message, qsizetype argument = 0) {
    return message.arguments().value(argument).value<QDBusObjectPath>().path();
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

LogindMonitor::LogindMonitor(const MessageBus& bus, NotificationCenter& center, Settle settle,
                             AppClock& clock)
    : center(center), settle(std::move(settle)), clock(clock) {
    logind.emplace(bus, service, [this] { follow(); });
}

LogindMonitor::~LogindMonitor() {
    // Settling may run the event loop, and logind must not be followed any more then.
    signalsOfManager.clear();
    signalsOfSession.reset();
    logind.reset();
    tasks.drain();
}

void LogindMonitor::follow() {
    signalsOfManager.clear();
    leaveSession();
    delayLock = {};
    abandonSleep();
    if (!logind->isThere())
        return;
    subscribe();
    takeDelayLock();
    logind->readProperty(managerPath, managerInterface, QStringLiteral("PreparingForSleep"),
                         [this](const QVariant& value) { setPreparingForSleep(value.toBool()); });
    findSession();
}

void LogindMonitor::subscribe() {
    const auto on = [this](const QString& signal, const BusService::Use& handle) {
        signalsOfManager.push_back(
            logind->subscribe(managerPath, managerInterface, signal, handle));
    };
    on(QStringLiteral("PrepareForSleep"),
       [this](const auto& signal) { setPreparingForSleep(signal.arguments().value(0).toBool()); });
    on(QStringLiteral("PrepareForShutdown"),
       [this](const auto& signal) { prepareForShutdown(signal.arguments().value(0).toBool()); });
    on(QStringLiteral("SessionNew"), [this](const auto&) { sessionAdded(); });
    on(QStringLiteral("SessionRemoved"),
       [this](const auto& signal) { sessionRemoved(pathIn(signal, 1)); });
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
    logind->call(managerPath, managerInterface, QStringLiteral("Inhibit"),
                 {QStringLiteral("sleep"), QStringLiteral("Tidemark"),
                  QStringLiteral("Write down what happened until then"), QStringLiteral("delay")},
                 [this](const QDBusMessage& reply) {
                     // If the preparations are finished by now, the sleep must not wait for this
                     // lock.
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

void LogindMonitor::sessionRemoved(const QString& path) {
    if (path != session)
        return;
    leaveSession();
    findSession();
}

void LogindMonitor::findSession() {
    logind->call(managerPath, managerInterface, QStringLiteral("GetSessionByPID"),
                 {QVariant::fromValue(static_cast<quint32>(::getpid()))},
                 [this](const auto& reply) {
                     if (reply.type() == QDBusMessage::ReplyMessage)
                         followSession(pathIn(reply));
                     else
                         findDisplaySession();
                 });
}

void LogindMonitor::findDisplaySession() {
    logind->call(managerPath, managerInterface, QStringLiteral("GetUser"),
                 {QVariant::fromValue(static_cast<quint32>(::getuid()))},
                 [this](const auto& reply) {
                     if (reply.type() != QDBusMessage::ReplyMessage)
                         return;
                     logind->readProperty(
                         pathIn(reply), userInterface, QStringLiteral("Display"),
                         [this](const QVariant& value) { followSession(pathInPair(value)); });
                 });
}

void LogindMonitor::followSession(const QString& path) {
    // Two searches may have run at the same time.
    if (path.isEmpty() || !session.isEmpty())
        return;
    session = path;
    signalsOfSession = logind->subscribe(
        session, BusService::propertiesInterface, BusService::propertiesChanged,
        [this](const QDBusMessage& signal) {
            sessionChanged(qdbus_cast<QVariantMap>(signal.arguments().value(1)),
                           signal.arguments().value(2).toStringList());
        },
        sessionInterface);
    readSessionActive();
}

void LogindMonitor::leaveSession() {
    signalsOfSession.reset();
    session.clear();
}

void LogindMonitor::sessionChanged(const QVariantMap& changed, const QStringList& invalidated) {
    if (const auto active = changed.constFind(activeProperty); active != changed.constEnd())
        setSessionActive(active->toBool());
    else if (invalidated.contains(activeProperty))
        readSessionActive();
}

void LogindMonitor::readSessionActive() {
    logind->readProperty(session, sessionInterface, activeProperty,
                         [this, asked = session](const QVariant& value) {
                             if (asked != session)
                                 return;
                             // The session has just ended. The next one is looked up when it
                             // begins.
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

} // namespace tidemark
