#pragma once

#include "tests/support/TemporaryFolder.h"

#include <QProcessEnvironment>

namespace tidemark::test {

/// The environment of this process, with the variables of a program whose home, data and settings
/// are in `folder`. `bus` is the address of both the session and the system bus, `platform` the
/// platform plugin of Qt.
inline QProcessEnvironment programEnvironment(const TemporaryFolder& folder, const QString& bus,
                                              const QString& platform) {
    const QString root = QString::fromStdString(folder.path().native());
    auto variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("HOME"), root);
    variables.insert(QStringLiteral("XDG_DATA_HOME"), root + QStringLiteral("/data"));
    variables.insert(QStringLiteral("XDG_CONFIG_HOME"), root + QStringLiteral("/config"));
    variables.insert(QStringLiteral("XDG_RUNTIME_DIR"), root + QStringLiteral("/run"));
    variables.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus);
    variables.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), bus);
    variables.insert(QStringLiteral("QT_QPA_PLATFORM"), platform);
    return variables;
}

} // namespace tidemark::test
