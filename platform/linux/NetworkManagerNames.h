#pragma once

#include <QString>

namespace tidemark {

/// The names on the system bus of the service that manages networks. Its interface has the name of
/// the service.
inline const QString networkManagerService = QStringLiteral("org.freedesktop.NetworkManager");
inline const QString networkManagerPath = QStringLiteral("/org/freedesktop/NetworkManager");
inline const QString networkDeviceInterface =
    QStringLiteral("org.freedesktop.NetworkManager.Device");

} // namespace tidemark
