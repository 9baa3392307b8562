#include "platform/linux/DesktopShortcut.h"

#include <utility>

namespace tidemark {

DesktopShortcut::DesktopShortcut(const MessageBus& session, Observer given)
    : bus(session), observer(std::move(given)),
      portal(bus, {.pressed = observer.pressed,
                   .availabilityChanged = [this](const auto& now) { usePortal(now); }}) {}

void DesktopShortcut::usePortal(const Availability& availability) {
    if (availability.obstacle != PortalShortcut::notOffered) {
        kde.reset();
        observer.availabilityChanged(availability);
    } else if (!kde)
        kde = std::make_unique<KdeShortcut>(bus, observer);
}

} // namespace tidemark
