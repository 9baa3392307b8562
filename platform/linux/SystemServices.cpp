#include "app/ports/SystemServices.h"

#include "platform/linux/LogindMonitor.h"
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

} // namespace tidemark
