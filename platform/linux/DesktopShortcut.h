#pragma once

#include "platform/linux/KdeShortcut.h"
#include "platform/linux/PortalShortcut.h"

#include <memory>

namespace tidemark {

/// Assigns the keys on a desktop where a program can't take them itself: through the portal, or
/// through KGlobalAccel while the portal offers no shortcuts. Main thread only.
class DesktopShortcut final : public GlobalShortcut {
public:
    DesktopShortcut(const MessageBus& session, Observer observer);

private:
    void usePortal(const Availability& availability);

    const MessageBus bus;
    const Observer observer;
    std::unique_ptr<KdeShortcut> kde;
    PortalShortcut portal;
};

} // namespace tidemark
