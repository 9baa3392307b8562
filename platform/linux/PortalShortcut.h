#pragma once

#include "app/ports/GlobalShortcut.h"
#include "platform/linux/BusService.h"

#include <vector>

namespace tidemark {

/// The keys of the search panel by the desktop's portal (org.freedesktop.portal.GlobalShortcuts),
/// for Wayland sessions, where no program may grab keys. The desktop shows a dialog in which the
/// user confirms or changes them, unless that was done before. Main thread only.
class PortalShortcut final : public GlobalShortcut {
public:
    PortalShortcut(const QDBusConnection& session, Observer observer);

private:
    using UseResults = std::function<void(const QVariantMap& results)>;

    void begin();
    void createSession();
    void listKeys();
    void bindKeys();
    void follow(const QVariantMap& results);
    /// Calls a method that answers later, by a signal of an object of its own. `use` is not called
    /// when the portal refuses, which leaves the keys unavailable.
    void request(const QString& method, QVariantList arguments, QVariantMap options,
                 UseResults use);

    const QString sender;
    const Observer observer;
    QString sessionPath;
    int lastRequest = 0;
    BusService::Subscription answer;
    BusService::Subscription presses;
    BusService portal;
};

} // namespace tidemark
