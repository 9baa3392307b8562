#include "app/ports/SystemServices.h"

#include "platform/macos/WorkspaceMonitor.h"

namespace tidemark {

std::unique_ptr<SleepAndSessionSource>
systemServices::sleepAndSession(NotificationCenter& notifications, SleepAndSessionSource::Settle) {
    return std::make_unique<WorkspaceMonitor>(notifications);
}

std::unique_ptr<BluetoothSource> systemServices::bluetooth() {
    return nullptr;
}

std::optional<std::string> systemServices::bluetoothAbsence() {
    return std::nullopt;
}

std::unique_ptr<NetworkPathSource> systemServices::networkPath() {
    return nullptr;
}

std::unique_ptr<WiFiSource> systemServices::wifi() {
    return nullptr;
}

std::unique_ptr<WiFiNameAccess> systemServices::wifiNameAccess() {
    return nullptr;
}

} // namespace tidemark
