#include "app/ports/SystemServices.h"

#include "platform/linux/LogindMonitor.h"
#include "platform/linux/SessionClipboard.h"
#include "platform/linux/SessionDisplays.h"
#include "platform/linux/SystemBus.h"

#include <optional>

namespace tidemark {

namespace {

/// Follows logind from when the system bus has replied.
class LogindSource final : public SleepAndSessionSource {
public:
    LogindSource(NotificationCenter& notifications, Settle settle)
        : bus([this, &notifications, settle = std::move(settle)](QDBusConnection connected) {
              monitor.emplace(std::move(connected), notifications, settle);
          }) {}

private:
    std::optional<LogindMonitor> monitor;
    SystemBus bus;
};

} // namespace

std::unique_ptr<SleepAndSessionSource>
systemServices::sleepAndSession(NotificationCenter& notifications,
                                SleepAndSessionSource::Settle settle) {
    return std::make_unique<LogindSource>(notifications, std::move(settle));
}

std::unique_ptr<Clipboard> systemServices::clipboard() {
    return std::make_unique<SessionClipboard>();
}

std::optional<std::string> systemServices::clipboardAbsence() {
    const auto addresses = GraphicalSessions::Addresses::ofEnvironment();
    if (!addresses.wayland.empty() || !addresses.x11.empty())
        return std::nullopt;
    return std::string(SessionClipboard::noSession);
}

std::unique_ptr<DisplaySource> systemServices::displays(std::function<void()> didChange) {
    return std::make_unique<SessionDisplays>(std::move(didChange));
}

} // namespace tidemark
