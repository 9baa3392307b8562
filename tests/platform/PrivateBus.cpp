#include "tests/platform/PrivateBus.h"

#include "tests/app/support/Await.h"

#include <QDBusMessage>
#include <QProcessEnvironment>
#include <stdexcept>

namespace tidemark::test {

using namespace Qt::StringLiterals;

PrivateBus::PrivateBus() {
    // Hides the daemon's warning about limits that it may not raise.
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(u"dbus-daemon"_s,
                  {u"--session"_s, u"--nofork"_s, u"--print-address"_s,
                   u"--address=unix:path="_s + QString::fromStdString((folder / "bus").native())});
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
    : MockService(home, std::move(connection), QStringList{u"--template"_s, templateName},
                  serviceName) {}

MockService::MockService(const PrivateBus& home, QDBusConnection connection, const Bare& object,
                         const QString& serviceName)
    : MockService(home, std::move(connection), QStringList{serviceName, object.path, serviceName},
                  serviceName) {}

MockService::MockService(const PrivateBus& home, QDBusConnection connection, QStringList arguments,
                         const QString& serviceName)
    : busAddress(home.address()), bus(std::move(connection)), arguments(std::move(arguments)),
      service(serviceName), watcher(service, bus) {
    QObject::connect(&watcher, &QDBusServiceWatcher::serviceOwnerChanged,
                     [this](const QString&, const QString&, const QString& owner) {
                         isThere = !owner.isEmpty();
                     });
}

MockService::~MockService() {
    running.kill();
    running.waitForFinished();
}

void MockService::start() {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, busAddress);
    running.setProcessEnvironment(environment);
    running.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    running.setStandardOutputFile(QProcess::nullDevice());
    // The system's Python: another one in PATH would not find dbusmock.
    running.start(u"/usr/bin/python3"_s,
                  QStringList{u"-m"_s, u"dbusmock"_s, u"--session"_s} + arguments);
    until([&] { return isThere || running.state() == QProcess::NotRunning; });
    if (!isThere)
        throw std::runtime_error("no mock service");
}

void MockService::stop() {
    running.kill();
    until([&] { return !isThere && running.state() == QProcess::NotRunning; });
}

void MockService::control(const QString& path, const QString& method,
                          const QVariantList& arguments) const {
    auto question =
        QDBusMessage::createMethodCall(service, path, u"org.freedesktop.DBus.Mock"_s, method);
    question.setArguments(arguments);
    const auto reply = bus.call(question);
    if (reply.type() != QDBusMessage::ReplyMessage)
        throw std::runtime_error(reply.errorMessage().toStdString());
}

} // namespace tidemark::test
