#include "app/ports/SystemServices.h"

#include "platform/linux/LogindMonitor.h"

namespace tidemark {

std::unique_ptr<SleepAndSessionSource>
systemServices::sleepAndSession(NotificationCenter& notifications,
                                SleepAndSessionSource::Settle settle) {
    return std::make_unique<LogindMonitor>(MessageBus::system(), notifications, std::move(settle));
}

} // namespace tidemark
