#include "tests/platform/PrivateBus.h"

#include "tests/app/support/Await.h"

#include <QDBusMessage>
#include <QProcessEnvironment>
#include <stdexcept>

namespace tidemark::test {

PrivateBus::PrivateBus() {
    // It complains when it may not raise its limits.
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--session"), QStringLiteral("--nofork"),
                   QStringLiteral("--print-address"),
                   QStringLiteral("--address=unix:path=")
                       + QString::fromStdString((folder / "bus").native())});
    while (!process.canReadLine())
        if (!process.waitForReadyRead())
            throw std::runtime_error("no dbus-daemon: " + process.errorString().toStdString());
    busAddress = QString::fromUtf8(process.readLine().trimmed());
}

PrivateBus::~PrivateBus() {
    process.kill();
    process.waitForFinished();
}

QDBusConnection PrivateBus::connect(const QString& name) const {
    QDBusConnection::disconnectFromBus(name);
    return QDBusConnection::connectToBus(busAddress, name);
}

MockService::MockService(const PrivateBus& home, QDBusConnection connection,
                         const QString& templateName, const QString& serviceName)
    : busAddress(home.address()), bus(std::move(connection)), mockTemplate(templateName),
      service(serviceName), watcher(service, bus) {
    QObject::connect(&watcher, &QDBusServiceWatcher::serviceOwnerChanged,
                     [this](const QString&, const QString&, const QString& owner) {
                         isThere = !owner.isEmpty();
                     });
}

MockService::~MockService() {
    process.kill();
    process.waitForFinished();
}

void MockService::start() {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), busAddress);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setStandardOutputFile(QProcess::nullDevice());
    // The system's own: the modules of its packages are not those of another in PATH.
    process.start(QStringLiteral("/usr/bin/python3"),
                  {QStringLiteral("-m"), QStringLiteral("dbusmock"), QStringLiteral("--session"),
                   QStringLiteral("--template"), mockTemplate});
    until([&] { return isThere || process.state() == QProcess::NotRunning; });
    if (!isThere)
        throw std::runtime_error("no mock service");
}

void MockService::stop() {
    process.kill();
    until([&] { return !isThere && process.state() == QProcess::NotRunning; });
}

void MockService::control(const QString& path, const QString& method,
                          const QVariantList& arguments) const {
    auto question = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Mock"), method);
    question.setArguments(arguments);
    const auto reply = bus.call(question);
    if (reply.type() != QDBusMessage::ReplyMessage)
        throw std::runtime_error(reply.errorMessage().toStdString());
}

} // namespace tidemark::test
