#pragma once

#include <QString>

namespace tidemark {

/// The names on the system bus of the service that manages sessions, seats and sleep.
inline const QString logindService = QStringLiteral("org.freedesktop.login1");
inline const QString logindPath = QStringLiteral("/org/freedesktop/login1");
inline const QString logindInterface = QStringLiteral("org.freedesktop.login1.Manager");

} // namespace tidemark
