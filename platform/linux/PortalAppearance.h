#pragma once

#include "app/ports/SystemAppearance.h"
#include "platform/linux/BusService.h"

namespace tidemark {

/// Follows the keys "color-scheme" and "contrast" of the namespace org.freedesktop.appearance, as
/// the desktop portal has them (https://flatpak.github.io/xdg-desktop-portal, Settings). Does not
/// start the portal, but reads it whenever it starts. Main thread only.
class PortalAppearance final : public SystemAppearanceSource {
public:
    PortalAppearance(const MessageBus& session, Changed changed);

private:
    void follow();
    void read(const QString& key);
    void take(const QString& key, const QVariant& value);

    const Changed changed;
    SystemAppearance current;
    BusService portal;
    BusService::Subscription changes;
};

} // namespace tidemark
