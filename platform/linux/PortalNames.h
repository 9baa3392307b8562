#pragma once

#include <QString>

namespace tidemark {

/// The names of the desktop portal on the session bus.
inline const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");

} // namespace tidemark
