#include "core/records/SystemActivity.h"

namespace tidemark {

namespace {

std::string volumeTitle(const OptionalShared<EnvironmentActivity>& volume) {
    const bool mounted = volume && volume->connected.value_or(false);
    return (volume ? volume->deviceName : "Volume") + (mounted ? " Mounted" : " Unmounted");
}

std::string displayTitle(const OptionalShared<EnvironmentActivity>& display) {
    const std::string name = display ? display->deviceName : "Display";
    if (!display || !display->connected)
        return name + " Configuration Changed";
    return name + (*display->connected ? " Connected" : " Disconnected");
}

std::string thermalTitle(const OptionalShared<EnvironmentActivity>& thermal) {
    const std::string state = thermal ? thermal->state.value_or("") : "";
    if (state == "critical")
        return "Critical Thermal Pressure";
    if (state == "serious")
        return "High Thermal Pressure";
    return "Thermal Pressure Eased";
}

std::string bluetoothTitle(const OptionalShared<BluetoothConnectionChange>& change) {
    if (!change)
        return "Bluetooth Connection Changed";
    return change->deviceName + (change->connected ? " Connected" : " Disconnected");
}

std::optional<std::string> networkName(const OptionalShared<WiFiContext>& network) {
    return network ? network->networkName : std::nullopt;
}

/// The name of the previous network, when another one was joined.
std::optional<std::string> replacedNetwork(const SystemActivity& activity) {
    const auto name = networkName(activity.wifiContext);
    auto previous = networkName(activity.previousWiFi);
    if (!activity.wifiConnected.value_or(false) || !name || previous == name)
        return std::nullopt;
    return previous;
}

std::string wifiTitle(const SystemActivity& activity) {
    if (!activity.wifiConnected.value_or(false))
        return "Wi-Fi Disconnected";
    return replacedNetwork(activity) ? "Wi-Fi Network Changed" : "Wi-Fi Connected";
}

std::string changed(const std::string& before, const std::string& after) {
    return before + " → " + after;
}

/// "nominal" as "Nominal". The names of states are ASCII.
std::string capitalized(std::string words) {
    bool startsWord = true;
    for (char& c : words) {
        const bool isLower = c >= 'a' && c <= 'z';
        const bool isUpper = c >= 'A' && c <= 'Z';
        if (startsWord ? isLower : isUpper)
            c = static_cast<char>(c ^ ('a' ^ 'A'));
        startsWord = !isLower && !isUpper;
    }
    return words;
}

/// The second line for displays and thermal pressure; absent when neither a display nor two states
/// are recorded.
std::optional<std::string> environmentDetail(const EnvironmentActivity& activity) {
    if (activity.display)
        return activity.display->label();
    if (activity.previousState && activity.state)
        return changed(capitalized(*activity.previousState), capitalized(*activity.state));
    return std::nullopt;
}

std::string bluetoothDetail(const BluetoothConnectionChange& change) {
    return "Bluetooth · " + change.deviceClass.value_or("Paired device");
}

/// The battery level in a record, in percent.
std::optional<std::int64_t> batteryLevel(const SystemActivity& activity) {
    if (activity.batteryActivity && activity.batteryActivity->observation.percentage)
        return activity.batteryActivity->observation.percentage;
    return activity.powerObservation ? activity.powerObservation->percentage : std::nullopt;
}

} // namespace

SystemActivity SystemActivity::observed(Kind kind, Date timestamp) {
    SystemActivity activity;
    activity.id = Uuid::random();
    activity.timestamp = timestamp;
    activity.kind = kind;
    return activity;
}

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

std::string SystemActivity::detailSubtitle() const {
    if (const auto name = networkName(wifiContext); kind == Kind::wifiChanged && name) {
        const auto previous = replacedNetwork(*this);
        return previous ? changed(*previous, *name) : *name;
    }
    if (kind == Kind::woke && observedSession)
        return "Sleep interval: " + observedSession->durationLabel();
    if (environmentActivity)
        if (auto detail = environmentDetail(*environmentActivity))
            return *std::move(detail);
    if (const auto level = batteryLevel(*this))
        return "Battery at " + std::to_string(*level) + "%";
    if (networkChange)
        return changed(networkChange->before.label(), networkChange->after.label());
    if (bluetoothChange)
        return bluetoothDetail(*bluetoothChange);
    const std::string recorded = "Recorded while Tidemark was running";
    return kind == Kind::wifiChanged ? "Wi-Fi link · " + recorded : recorded;
}

} // namespace tidemark
