#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>

namespace tidemark::test {

/// A StatusNotifierWatcher with its host, as a panel of a desktop has them.
class NotifierWatcher : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ registered)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)

public:
    explicit NotifierWatcher(QDBusConnection home) : bus(std::move(home)) {
        bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                           QDBusConnection::ExportAllContents);
    }
    ~NotifierWatcher() override {
        stop();
        bus.unregisterObject(QStringLiteral("/StatusNotifierWatcher"));
    }

    void start() { bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher")); }
    void stop() {
        items.clear();
        bus.unregisterService(QStringLiteral("org.kde.StatusNotifierWatcher"));
    }
    void setHost(bool there) {
        isHosted = there;
        if (there)
            Q_EMIT StatusNotifierHostRegistered();
        else
            Q_EMIT StatusNotifierHostUnregistered();
    }

    bool hasHost() const { return isHosted; }
    QStringList registered() const { return items; }
    int protocolVersion() const { return 0; }

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& item) {
        items += item;
        Q_EMIT StatusNotifierItemRegistered(item);
    }

Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();
    void StatusNotifierItemRegistered(const QString& item);

private:
    QDBusConnection bus;
    QStringList items;
    bool isHosted = false;
};

} // namespace tidemark::test
