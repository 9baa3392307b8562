#pragma once

#include "app/ports/TrayHost.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <functional>

namespace tidemark {

/// Whether a host of status notifier items is registered
/// (https://www.freedesktop.org/wiki/Specifications/StatusNotifierItem). The watcher of the session
/// may start long after the program and may be started again. Starts nothing. Main thread only.
class StatusNotifierHost final : public QObject, public TrayHost {
    Q_OBJECT

public:
    StatusNotifierHost(const QDBusConnection& session, std::function<void(bool isThere)> changed);

private Q_SLOTS:
    void readHost();

private:
    void follow(const QString& owner);
    void setThere(bool there);

    QDBusConnection bus;
    const std::function<void(bool)> changed;
    QDBusServiceWatcher watcher;
    /// The unique name of the running watcher; empty when there is none.
    QString owner;
    bool isThere = false;
};

} // namespace tidemark
