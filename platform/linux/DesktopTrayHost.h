#pragma once

#include "platform/linux/EmbeddedTrayHost.h"
#include "platform/linux/StatusNotifierHost.h"

namespace tidemark {

/// Reports whether there is a host of status notifier items or a program that embeds icons. Main
/// thread only.
class DesktopTrayHost final : public TrayHost {
public:
    DesktopTrayHost(const MessageBus& session, std::function<void(bool isThere)> changed);

private:
    void report();

    const std::function<void(bool)> changed;
    bool hasNotifier = false;
    bool hasEmbedder = false;
    StatusNotifierHost notifier;
    EmbeddedTrayHost embedder;
};

} // namespace tidemark
