#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <map>

namespace tidemark::test {

/// The settings of a desktop portal (https://flatpak.github.io/xdg-desktop-portal).
class DesktopPortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit DesktopPortal(QDBusConnection home) : bus(std::move(home)) {
        bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                           QDBusConnection::ExportAllContents);
    }
    ~DesktopPortal() override {
        stop();
        bus.unregisterObject(QStringLiteral("/org/freedesktop/portal/desktop"));
    }

    void start() { bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop")); }
    void stop() { bus.unregisterService(QStringLiteral("org.freedesktop.portal.Desktop")); }
    void set(const QString& key, quint32 value) {
        values[key] = value;
        Q_EMIT SettingChanged(QStringLiteral("org.freedesktop.appearance"), key,
                              QDBusVariant(value));
    }

public Q_SLOTS:
    /// Wraps the value twice, as the portal does.
    QDBusVariant Read(const QString&, const QString& key) {
        return QDBusVariant(QVariant::fromValue(QDBusVariant(values[key])));
    }

Q_SIGNALS:
    void SettingChanged(const QString& name, const QString& key, const QDBusVariant& value);

private:
    QDBusConnection bus;
    std::map<QString, quint32> values;
};

} // namespace tidemark::test
