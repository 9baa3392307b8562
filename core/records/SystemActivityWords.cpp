#include "core/records/SystemActivity.h"

#include <algorithm>
#include <array>

namespace tidemark {

namespace {

using Kind = SystemActivity::Kind;

struct Words {
    Kind kind;
    /// The symbol of most records of the kind.
    std::string_view symbol;
    std::string_view source;
    std::string_view explanation;
    std::string_view coverage;
};

constexpr std::string_view notificationCoverage =
    "Tidemark records these notifications only while running. This is not a complete "
    "power history and does not include display-only sleep.";
constexpr std::string_view environmentCoverage =
    "Recorded while environment history is enabled and Tidemark is awake and running. "
    "Changes settle for 2 seconds. Startup, wake, and re-enabling establish a baseline; "
    "events during observation gaps cannot be reconstructed.";

constexpr auto table = std::to_array<Words>({
    {Kind::sleepRequested, "moon.zzz", "macOS workspace notification",
     "macOS notified Tidemark that the Mac was about to sleep. This is the notification "
     "time, not proof of when sleep completed.",
     notificationCoverage},
    {Kind::woke, "sun.max", "macOS workspace notification",
     "macOS notified Tidemark that the Mac woke from sleep.", notificationCoverage},
    {Kind::powerOffRequested, "power", "macOS workspace notification",
     "A legacy workspace notification was recorded. It does not establish that the user "
     "requested a shutdown or logout and is excluded from the activity timeline.",
     notificationCoverage},
    {Kind::volumeChanged, "externaldrive", "macOS volume notification",
     "A visible mounted volume appeared or disappeared. This may be an external drive, "
     "disk image, or network volume; it does not establish that hardware was plugged in "
     "or safely ejected.",
     environmentCoverage},
    {Kind::displayChanged, "display", "macOS display-configuration notification",
     "The displays available to macOS changed. Docking, mirroring, or virtual displays "
     "can affect this inventory. No screen content or display serial numbers are "
     "collected.",
     environmentCoverage},
    {Kind::thermalChanged, "thermometer.medium", "macOS thermal-state notification",
     "macOS reported elevated system thermal pressure or recovery. This is not a "
     "temperature reading or proof of why an app slowed down. Mild fluctuations are "
     "omitted.",
     environmentCoverage},
    {Kind::networkChanged, "wifi.slash", "macOS network path notification",
     "macOS reported a change in the network path available to Tidemark. An available "
     "path does not confirm internet access. Interface types do not identify a Wi-Fi "
     "network, a VPN provider, or whether traffic is protected by a VPN.",
     "Recorded only while Tidemark is awake and running with network history enabled. "
     "Changes lasting less than 2 seconds are ignored. A new starting point is "
     "established after sleep, relaunch, or re-enabling history."},
    {Kind::bluetoothChanged, "antenna.radiowaves.left.and.right",
     "macOS Bluetooth connection notification",
     "A connection change was observed for a paired Bluetooth device exposed by macOS "
     "IOBluetooth. Brief reconnects are filtered. This is not a complete history of "
     "Bluetooth Low Energy devices or nearby devices.",
     "Recorded only while Tidemark is awake and running with Bluetooth history enabled "
     "and permitted. Reconnects shorter than 5 seconds are ignored. Existing connections "
     "at startup are not new events."},
    {Kind::wifiChanged, "wifi.slash", "macOS Wi-Fi link notification",
     "macOS reported a change in the physical Wi-Fi link. This is separate from internet "
     "access and the default network route; Ethernet or a VPN may remain available. "
     "Network names are included only when enabled and permitted.",
     "Recorded while Tidemark is awake and running with network history enabled. The new "
     "link state must remain stable for 2 seconds; shorter reconnect fluctuations are "
     "filtered. Initial and unavailable link metadata establish a new starting point; "
     "macOS may coalesce very rapid transitions."},
    {Kind::bluetoothPowerChanged, "antenna.radiowaves.left.and.right",
     "macOS Bluetooth power notification",
     "macOS reported that the Bluetooth radio turned on or off. This is separate from the "
     "connection state of individual accessories.",
     "Recorded while Tidemark is awake and running with Bluetooth history enabled and "
     "permitted. The initial radio state and unknown or unavailable states are not power "
     "events. Sleep, relaunch, or re-enabling history establishes a new starting point."},
    {Kind::batteryChanged, "battery.50percent", "macOS power-source notification",
     "macOS reported a change in the internal battery or power source. External power "
     "does not necessarily mean the battery is charging. Small percentage changes are not "
     "timeline events.",
     "Recorded while Tidemark is awake and running with battery history enabled. Changes "
     "settle for 2 seconds. Initial, missing, and post-sleep observations establish a new "
     "starting point. Low battery is recorded below 20%, then rearmed after recovery to "
     "at least 25% on external power."},
    {Kind::lowPowerModeChanged, "leaf", "macOS power-mode notification",
     "macOS reported that Low Power Mode became enabled or disabled. This records the "
     "effective mode, not who changed it or whether it changed automatically with the "
     "power source.",
     "Recorded while Tidemark is awake and running with power and battery history "
     "enabled. Initial observations, relaunch, and wake establish a new starting point. "
     "Duplicate notifications do not create events."},
});

constexpr const Words& wordsOf(Kind kind) {
    return table[static_cast<std::size_t>(kind)];
}
static_assert(table.size() == json::rawValues<Kind>.size(), "each kind needs a row in the table");
static_assert(std::ranges::all_of(json::rawValues<Kind>, [](const auto& entry) {
    return wordsOf(entry.value).kind == entry.value;
}));

} // namespace

std::string_view SystemActivity::symbol() const {
    using enum NetworkConnectionState::Availability;
    if (kind == Kind::networkChanged && networkChange
        && networkChange->after.availability == available)
        return "network";
    if (kind == Kind::wifiChanged && wifiConnected.value_or(false))
        return "wifi";
    if (kind == Kind::batteryChanged && batteryActivity
        && batteryActivity->kind == BatteryActivity::Kind::powerConnected)
        return "powerplug";
    return wordsOf(kind).symbol;
}

std::string_view SystemActivity::source() const {
    return wordsOf(kind).source;
}

std::string_view SystemActivity::explanation() const {
    return wordsOf(kind).explanation;
}

std::string_view SystemActivity::coverageExplanation() const {
    return wordsOf(kind).coverage;
}

} // namespace tidemark
