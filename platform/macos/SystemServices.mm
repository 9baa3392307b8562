#include "app/ports/SystemServices.h"

#include "platform/macos/WorkspaceMonitor.h"

namespace tidemark {

std::unique_ptr<SleepAndSessionSource>
systemServices::sleepAndSession(NotificationCenter& notifications, SleepAndSessionSource::Settle) {
    return std::make_unique<WorkspaceMonitor>(notifications);
}

std::unique_ptr<Clipboard> systemServices::clipboard() {
    return nullptr;
}

std::optional<std::string> systemServices::clipboardAbsence() {
    return std::string();
}

std::unique_ptr<DisplaySource> systemServices::displays(std::function<void()>) {
    return nullptr;
}

} // namespace tidemark
