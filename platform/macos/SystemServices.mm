#include "app/ports/SystemServices.h"

#include "platform/macos/WorkspaceMonitor.h"

namespace tidemark {

std::unique_ptr<SleepAndSessionSource>
systemServices::sleepAndSession(NotificationCenter& notifications, SleepAndSessionSource::Settle) {
    return std::make_unique<WorkspaceMonitor>(notifications);
}

// This system's adapters of the other ports are not written yet.

bool systemServices::hasConnections() {
    return false;
}

bool systemServices::hasPower() {
    return false;
}

bool systemServices::hasEnvironment() {
    return false;
}

std::unique_ptr<BatterySource> systemServices::battery(DidChange) {
    return nullptr;
}

std::unique_ptr<DisplaySource> systemServices::displays(DidChange) {
    return nullptr;
}

std::unique_ptr<LowPowerModeSource> systemServices::lowPowerMode(DidChange) {
    return nullptr;
}

/// WorkspaceMonitor posts these notifications as well.
std::unique_ptr<ScreenSleepSource> systemServices::screenSleep(NotificationCenter&) {
    return nullptr;
}

std::unique_ptr<ThermalSource> systemServices::thermalState(DidChange) {
    return nullptr;
}

std::unique_ptr<VolumeSource> systemServices::volumes(DidChange) {
    return nullptr;
}

VolumeReading systemServices::volumeReading() {
    return {.list = [] { return std::nullopt; }, .details = [](const auto&) { return std::nullopt; }};
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

bool systemServices::hasFileIndex() {
    return false;
}

std::unique_ptr<FileIndex> systemServices::fileIndex() {
    return nullptr;
}

std::unique_ptr<LoginItem> systemServices::loginItem(std::vector<std::string>) {
    return nullptr;
}

} // namespace tidemark
