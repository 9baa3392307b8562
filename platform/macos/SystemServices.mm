#include "app/ports/SystemServices.h"

#include "platform/macos/WorkspaceMonitor.h"

namespace tidemark {

std::unique_ptr<SleepAndSessionSource>
systemServices::sleepAndSession(NotificationCenter& notifications, SleepAndSessionSource::Settle) {
    return std::make_unique<WorkspaceMonitor>(notifications);
}

} // namespace tidemark
