#pragma once

#include "core/base/Shared.h"
#include "core/base/Uuid.h"
#include "core/records/BatteryActivity.h"
#include "core/records/ConnectionActivity.h"
#include "core/records/EnvironmentActivity.h"

namespace tidemark {

/// One live observation: sleep, power, connections, volumes, displays or thermal pressure. Each
/// kind sets its own payload; the others are absent. The larger payloads are shared, so that an
/// absent one takes a pointer: a history holds thousands of records, each with one or two payloads.
struct SystemActivity {
    enum class Kind {
        sleepRequested,
        woke,
        powerOffRequested,
        volumeChanged,
        displayChanged,
        thermalChanged,
        networkChanged,
        bluetoothChanged,
        wifiChanged,
        bluetoothPowerChanged,
        batteryChanged,
        lowPowerModeChanged,
    };

    Uuid id;
    /// When the change was first observed.
    Date timestamp;
    Kind kind = Kind::sleepRequested;
    std::optional<BatteryObservation> powerObservation;
    std::optional<ObservedSession> observedSession;
    /// The network joined, or the one left when disconnected.
    OptionalShared<WiFiContext> wifiContext;
    OptionalShared<WiFiContext> previousWiFi;
    OptionalShared<EnvironmentActivity> environmentActivity;
    std::optional<bool> lowPowerModeEnabled;
    OptionalShared<BatteryActivity> batteryActivity;
    std::optional<bool> bluetoothPoweredOn;
    std::optional<bool> wifiConnected;
    OptionalShared<NetworkConnectionChange> networkChange;
    OptionalShared<BluetoothConnectionChange> bluetoothChange;

    /// A new record without a payload, of a change first observed at `timestamp`.
    static SystemActivity observed(Kind kind, Date timestamp);

    /// False for kinds that only older releases recorded and that are no longer shown.
    bool isTimelineEligible() const { return kind != Kind::powerOffRequested; }
    /// The headline that is shown.
    std::string title() const;
    /// The second line.
    std::string detailSubtitle() const;
    /// Name of the symbol image.
    std::string_view symbol() const;
    /// The system notification that it comes from.
    std::string_view source() const;
    /// What the record says and what it does not prove.
    std::string_view explanation() const;
    /// When such records are made and what they leave out.
    std::string_view coverageExplanation() const;

    bool operator==(const SystemActivity&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"id", &SystemActivity::id, Internal},
            Field{"timestamp", &SystemActivity::timestamp},
            Field{"kind", &SystemActivity::kind},
            Field{"powerObservation", &SystemActivity::powerObservation},
            Field{"observedSession", &SystemActivity::observedSession},
            Field{"wifiContext", &SystemActivity::wifiContext},
            Field{"previousWiFi", &SystemActivity::previousWiFi},
            Field{"environmentActivity", &SystemActivity::environmentActivity},
            Field{"lowPowerModeEnabled", &SystemActivity::lowPowerModeEnabled},
            Field{"batteryActivity", &SystemActivity::batteryActivity},
            Field{"bluetoothPoweredOn", &SystemActivity::bluetoothPoweredOn},
            Field{"wifiConnected", &SystemActivity::wifiConnected},
            Field{"networkChange", &SystemActivity::networkChange},
            Field{"bluetoothChange", &SystemActivity::bluetoothChange},
        };
    }
};

template <>
inline constexpr auto json::rawValues<SystemActivity::Kind> =
    std::to_array<json::RawValue<SystemActivity::Kind>>({
        {SystemActivity::Kind::sleepRequested, "sleepRequested"},
        {SystemActivity::Kind::woke, "woke"},
        {SystemActivity::Kind::powerOffRequested, "powerOffRequested"},
        {SystemActivity::Kind::volumeChanged, "volumeChanged"},
        {SystemActivity::Kind::displayChanged, "displayChanged"},
        {SystemActivity::Kind::thermalChanged, "thermalChanged"},
        {SystemActivity::Kind::networkChanged, "networkChanged"},
        {SystemActivity::Kind::bluetoothChanged, "bluetoothChanged"},
        {SystemActivity::Kind::wifiChanged, "wifiChanged"},
        {SystemActivity::Kind::bluetoothPowerChanged, "bluetoothPowerChanged"},
        {SystemActivity::Kind::batteryChanged, "batteryChanged"},
        {SystemActivity::Kind::lowPowerModeChanged, "lowPowerModeChanged"},
    });

} // namespace tidemark
