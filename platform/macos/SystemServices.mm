#include "app/ports/SystemServices.h"

#include "platform/macos/WorkspaceMonitor.h"

namespace tidemark {

std::unique_ptr<SleepAndSessionSource>
systemServices::sleepAndSession(NotificationCenter& notifications, SleepAndSessionSource::Settle) {
    return std::make_unique<WorkspaceMonitor>(notifications);
}

std::unique_ptr<ApplicationSource> systemServices::applications() {
    return nullptr;
}

std::optional<std::string> systemServices::applicationsAbsence() {
    return "This release can’t follow applications on this system.";
}

std::unique_ptr<FileIndex> systemServices::fileIndex() {
    return nullptr;
}

std::unique_ptr<LoginItem> systemServices::loginItem(std::vector<std::string>) {
    return nullptr;
}

} // namespace tidemark
