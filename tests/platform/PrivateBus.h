#pragma once

#include "tests/support/TemporaryFolder.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QProcess>
#include <QString>
#include <QVariantList>

namespace tidemark::test {

/// A message bus for one test.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();

    /// A connection that lives as long as the bus.
    QDBusConnection connect(const QString& name) const;
    const QString& address() const { return busAddress; }
    const QProcess& daemon() const { return process; }

private:
    TemporaryFolder folder;
    QProcess process;
    QString busAddress;
};

/// A service that a template of python3-dbusmock plays.
class MockService {
public:
    /// `bus` also carries the calls of the test, so that they arrive in order with what the code
    /// under test sent before over the same connection.
    MockService(const PrivateBus& home, QDBusConnection connection, const QString& templateName,
                const QString& serviceName);
    ~MockService();

    /// Starts it and waits until it has its name.
    void start();
    /// Kills it and waits until the name is free.
    void stop();

    /// Calls a method of the interface of the mock, org.freedesktop.DBus.Mock, and waits.
    void control(const QString& path, const QString& method, const QVariantList& arguments) const;

private:
    QString busAddress;
    QDBusConnection bus;
    QString mockTemplate;
    QString service;
    QDBusServiceWatcher watcher;
    QProcess process;
    bool isThere = false;
};

} // namespace tidemark::test
