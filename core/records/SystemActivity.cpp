#include "core/records/SystemActivity.h"

namespace tidemark {

namespace {

std::string volumeTitle(const std::optional<EnvironmentActivity>& volume) {
    const bool mounted = volume && volume->connected.value_or(false);
    return (volume ? volume->deviceName : "Volume") + (mounted ? " Mounted" : " Unmounted");
}

std::string displayTitle(const std::optional<EnvironmentActivity>& display) {
    const std::string name = display ? display->deviceName : "Display";
    if (!display || !display->connected)
        return name + " Configuration Changed";
    return name + (*display->connected ? " Connected" : " Disconnected");
}

std::string thermalTitle(const std::optional<EnvironmentActivity>& thermal) {
    const std::string state = thermal ? thermal->state.value_or("") : "";
    if (state == "critical")
        return "Critical Thermal Pressure";
    if (state == "serious")
        return "High Thermal Pressure";
    return "Thermal Pressure Eased";
}

std::string bluetoothTitle(const std::optional<BluetoothConnectionChange>& change) {
    if (!change)
        return "Bluetooth Connection Changed";
    return change->deviceName + (change->connected ? " Connected" : " Disconnected");
}

std::string wifiTitle(const SystemActivity& activity) {
    if (!activity.wifiConnected.value_or(false))
        return "Wi-Fi Disconnected";
    const bool renamed = activity.wifiContext && activity.previousWiFi
                         && activity.wifiContext->networkName && activity.previousWiFi->networkName
                         && activity.wifiContext->networkName != activity.previousWiFi->networkName;
    return renamed ? "Wi-Fi Network Changed" : "Wi-Fi Connected";
}

} // namespace

std::string SystemActivity::title() const {
    switch (kind) {
    case Kind::sleepRequested:
        return "Mac Going to Sleep";
    case Kind::woke:
        return "Mac Woke Up";
    case Kind::powerOffRequested:
        return "Unverified Session-End Notification";
    case Kind::volumeChanged:
        return volumeTitle(environmentActivity);
    case Kind::displayChanged:
        return displayTitle(environmentActivity);
    case Kind::thermalChanged:
        return thermalTitle(environmentActivity);
    case Kind::networkChanged:
        return networkChange ? std::string(networkChange->title()) : "Network Connection Changed";
    case Kind::bluetoothChanged:
        return bluetoothTitle(bluetoothChange);
    case Kind::wifiChanged:
        return wifiTitle(*this);
    case Kind::bluetoothPowerChanged:
        return bluetoothPoweredOn.value_or(false) ? "Bluetooth Turned On" : "Bluetooth Turned Off";
    case Kind::batteryChanged:
        return batteryActivity ? std::string(batteryActivity->title()) : "Battery Changed";
    case Kind::lowPowerModeChanged:
        return lowPowerModeEnabled.value_or(false) ? "Low Power Mode Enabled"
                                                   : "Low Power Mode Disabled";
    }
    return {};
}

} // namespace tidemark
