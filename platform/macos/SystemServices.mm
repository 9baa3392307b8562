#include "app/ports/SystemServices.h"

#include "platform/macos/WorkspaceMonitor.h"

namespace tidemark {

std::unique_ptr<SleepAndSessionSource>
systemServices::sleepAndSession(NotificationCenter& notifications, SleepAndSessionSource::Settle) {
    return std::make_unique<WorkspaceMonitor>(notifications);
}

// This system's adapters of the other ports are not written yet.

/// WorkspaceMonitor posts these notifications as well.
std::unique_ptr<ScreenSleepSource> systemServices::screenSleep(NotificationCenter&) {
    return nullptr;
}

std::unique_ptr<Clipboard> systemServices::clipboard() {
    return nullptr;
}

std::optional<std::string> systemServices::clipboardAbsence() {
    return std::string();
}

std::unique_ptr<ApplicationSource> systemServices::applications() {
    return nullptr;
}

std::optional<std::string> systemServices::applicationsAbsence() {
    return "This release can’t follow applications on this system.";
}

std::unique_ptr<DesktopNotifications> systemServices::desktopNotifications() {
    return nullptr;
}

std::optional<std::string> systemServices::desktopNotificationsAbsence() {
    return std::string();
}

bool systemServices::hasFileIndex() {
    return false;
}

std::unique_ptr<FileIndex> systemServices::fileIndex() {
    return nullptr;
}

std::unique_ptr<LoginItem> systemServices::loginItem(std::vector<std::string>) {
    return nullptr;
}

std::unique_ptr<RecorderService> systemServices::recorderService() {
    return nullptr;
}

} // namespace tidemark
