#include "platform/linux/LogindSession.h"

#include "platform/linux/LogindNames.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <utility>

#include <unistd.h>

namespace tidemark {

namespace {

const QString sessionInterface = QStringLiteral("org.freedesktop.login1.Session");
const QString userInterface = QStringLiteral("org.freedesktop.login1.User");

QString pathIn(const QDBusMessage& message, qsizetype argument = 0) {
    return message.arguments().value(argument).value<QDBusObjectPath>().path();
}

/// The object path in a pair of an identifier and a path; empty if the identifier is, which means
/// that there is no object.
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

LogindSession::LogindSession(const MessageBus& bus, QString property, Use use)
    : property(std::move(property)), use(std::move(use)),
      logind(bus, logindService, [this] { follow(); }) {}

void LogindSession::follow() {
    signalsOfManager.clear();
    leave();
    if (!logind.isThere())
        return;
    const auto on = [this](const QString& signal, const BusService::Use& handle) {
        signalsOfManager.push_back(logind.subscribe(logindPath, logindInterface, signal, handle));
    };
    on(QStringLiteral("SessionNew"), [this](const auto&) {
        if (session.isEmpty())
            find();
    });
    on(QStringLiteral("SessionRemoved"), [this](const auto& signal) {
        if (pathIn(signal, 1) != session)
            return;
        leave();
        find();
    });
    find();
}

void LogindSession::find() {
    logind.ask(logindPath, logindInterface, QStringLiteral("GetSessionByPID"),
               {QVariant::fromValue(static_cast<quint32>(::getpid()))}, [this](const auto& reply) {
                   if (reply.type() == QDBusMessage::ReplyMessage)
                       followSession(pathIn(reply));
                   else
                       findDisplay();
               });
}

void LogindSession::findDisplay() {
    logind.ask(logindPath, logindInterface, QStringLiteral("GetUser"),
               {QVariant::fromValue(static_cast<quint32>(::getuid()))}, [this](const auto& reply) {
                   if (reply.type() != QDBusMessage::ReplyMessage)
                       return;
                   logind.readProperty(
                       pathIn(reply), userInterface, QStringLiteral("Display"),
                       [this](const QVariant& value) { followSession(pathInPair(value)); });
               });
}

void LogindSession::followSession(const QString& path) {
    // Two searches may have run at the same time.
    if (path.isEmpty() || !session.isEmpty())
        return;
    session = path;
    signalsOfSession = logind.subscribe(
        session, BusService::propertiesInterface, BusService::propertiesChanged,
        [this](const QDBusMessage& signal) { change(signal); }, sessionInterface);
    read();
}

void LogindSession::leave() {
    signalsOfSession.reset();
    if (!std::exchange(session, QString()).isEmpty())
        use(std::nullopt);
}

void LogindSession::change(const QDBusMessage& signal) {
    const auto changed = qdbus_cast<QVariantMap>(signal.arguments().value(1));
    if (const auto value = changed.constFind(property); value != changed.constEnd())
        use(value->toBool());
    else if (signal.arguments().value(2).toStringList().contains(property))
        read();
}

void LogindSession::read() {
    logind.readProperty(session, sessionInterface, property,
                        [this, asked = session](const QVariant& value) {
                            if (asked != session)
                                return;
                            // The session has just ended, and the next one is looked up when it
                            // begins; or logind did not answer, and `readProperty` starts over.
                            if (!value.isValid())
                                return leave();
                            use(value.toBool());
                        });
}

} // namespace tidemark
