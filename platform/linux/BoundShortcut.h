#pragma once

#include <QDBusArgument>
#include <QString>
#include <QVariantMap>

namespace tidemark {

/// An element of the arrays of shortcuts of the desktop portal, of the type (sa{sv}).
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
    return argument;
}

} // namespace tidemark
