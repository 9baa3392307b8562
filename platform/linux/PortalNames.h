#pragma once

#include <QString>

namespace tidemark {

/// The names on the session bus of the service by which a program asks the desktop.
inline const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");

} // namespace tidemark
