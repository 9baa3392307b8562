#pragma once

#include "tests/support/TemporaryFolder.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QVariantList>

namespace tidemark::test {

/// A message bus for one test.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();

    /// A connection that is valid for the lifetime of the bus.
    QDBusConnection connect(const QString& name) const;
    const QString& address() const { return busAddress; }
    const QProcess& daemon() const { return process; }

private:
    TemporaryFolder folder;
    QProcess process;
    QString busAddress;
};

/// A mock service by python3-dbusmock.
class MockService {
public:
    /// A service from a template. `connection` is also used by the code under test, so that its
    /// calls and those of the test arrive in order.
    MockService(const PrivateBus& home, QDBusConnection connection, const QString& templateName,
                const QString& serviceName);
    /// A service without a template: one object at `path` with an empty interface that has the name
    /// of the service.
    struct Bare {
        QString path;
    };
    MockService(const PrivateBus& home, QDBusConnection connection, const Bare& object,
                const QString& serviceName);
    ~MockService();

    /// Starts the service and waits until it owns its name.
    void start();
    /// Kills the service and waits until its name is released.
    void stop();

    /// Calls a method of the mock's control interface, org.freedesktop.DBus.Mock, and waits for the
    /// reply. Throws if that is an error.
    void control(const QString& path, const QString& method, const QVariantList& arguments) const;
    const QProcess& process() const { return running; }

private:
    MockService(const PrivateBus& home, QDBusConnection connection, QStringList arguments,
                const QString& serviceName);

    QString busAddress;
    QDBusConnection bus;
    /// The command-line arguments of dbusmock.
    QStringList arguments;
    QString service;
    QDBusServiceWatcher watcher;
    QProcess running;
    bool isThere = false;
};

} // namespace tidemark::test
