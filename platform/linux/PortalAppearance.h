#pragma once

#include "app/ports/SystemAppearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QObject>

namespace tidemark {

/// The keys "color-scheme" and "contrast" of the namespace org.freedesktop.appearance, as the
/// desktop portal has them (https://flatpak.github.io/xdg-desktop-portal, Settings). Does not start
/// the portal. Main thread only.
class PortalAppearance final : public QObject, public SystemAppearanceSource {
    Q_OBJECT

public:
    PortalAppearance(const QDBusConnection& session, Changed changed);

private Q_SLOTS:
    void settingChanged(const QString& name, const QString& key, const QDBusVariant& value);

private:
    void read(const QString& key);
    void take(const QString& key, const QVariant& value);

    QDBusConnection bus;
    const Changed changed;
    SystemAppearance current;
};

} // namespace tidemark
