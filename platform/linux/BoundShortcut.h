#pragma once

#include <QDBusArgument>
#include <QString>
#include <QVariantMap>

namespace tidemark {

/// One shortcut in a list of the desktop portal. Its D-Bus type is (sa{sv}).
struct BoundShortcut {
    QString id;
    QVariantMap properties;
};

inline QDBusArgument& operator<<(QDBusArgument& argument, const BoundShortcut& shortcut) {
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

inline const QDBusArgument& operator>>(const QDBusArgument& argument, BoundShortcut& shortcut) {
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    // In the form that Qt requires. NOLINTNEXTLINE(bugprone-return-const-ref-from-parameter)
    return argument;
}

} // namespace tidemark
