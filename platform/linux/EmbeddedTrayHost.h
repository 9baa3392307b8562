#pragma once

#include "app/base/MainThreadCalls.h"
#include "app/ports/TrayHost.h"
#include "platform/linux/GraphicalSessions.h"

#include <functional>
#include <memory>

namespace tidemark {

/// Reports whether a program of the X11 display embeds the icons of others: it then owns the
/// selection "_NET_SYSTEM_TRAY_S0" (https://specifications.freedesktop.org/systemtray-spec). Panels
/// that have no status notifier items show icons in this way. Main thread only.
class EmbeddedTrayHost final : public TrayHost {
public:
    /// `changed` is called from the event loop, also when the selection gets another owner.
    explicit EmbeddedTrayHost(
        std::function<void(bool isThere)> changed,
        std::shared_ptr<GraphicalSessions> sessions = GraphicalSessions::ofProcess());

private:
    const std::function<void(bool)> changed;
    const std::shared_ptr<GraphicalSessions> sessions;
    MainThreadCalls calls;
    std::shared_ptr<void> reader;
};

} // namespace tidemark
