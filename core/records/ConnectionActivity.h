#pragma once

#include "core/base/JsonFields.h"
#include "core/records/BatteryActivity.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>

namespace tidemark {

/// The state of the machine's network connection as the system reports it.
struct NetworkConnectionState {
    enum class Availability { available, unavailable, connectionRequired };
    enum class Interface { wifi, ethernet, cellular, other };

    Availability availability = Availability::unavailable;
    std::optional<bool> expensive;
    std::optional<bool> constrained;
    /// Empty unless the path is available.
    std::set<Interface> interfaces;

    /// Makes a state, without the interfaces unless it is available.
    static NetworkConnectionState make(Availability availability, std::set<Interface> interfaces,
                                       std::optional<bool> expensive = {},
                                       std::optional<bool> constrained = {});
    /// The interfaces of an available connection, as in "Wi-Fi + Ethernet", else the availability.
    std::string label() const;

    bool operator==(const NetworkConnectionState&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"availability", &NetworkConnectionState::availability},
            Field{"expensive", &NetworkConnectionState::expensive},
            Field{"constrained", &NetworkConnectionState::constrained},
            Field{"interfaces", &NetworkConnectionState::interfaces},
        };
    }
};

template <>
inline constexpr auto json::rawValues<NetworkConnectionState::Availability> =
    std::to_array<json::RawValue<NetworkConnectionState::Availability>>({
        {NetworkConnectionState::Availability::available, "Available"},
        {NetworkConnectionState::Availability::unavailable, "Unavailable"},
        {NetworkConnectionState::Availability::connectionRequired, "Connection required"},
    });

template <>
inline constexpr auto json::rawValues<NetworkConnectionState::Interface> =
    std::to_array<json::RawValue<NetworkConnectionState::Interface>>({
        {NetworkConnectionState::Interface::wifi, "Wi-Fi"},
        {NetworkConnectionState::Interface::ethernet, "Ethernet"},
        {NetworkConnectionState::Interface::cellular, "Cellular"},
        {NetworkConnectionState::Interface::other, "Other network"},
    });

struct NetworkConnectionChange {
    NetworkConnectionState before;
    NetworkConnectionState after;

    std::string_view title() const;

    bool operator==(const NetworkConnectionChange&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"before", &NetworkConnectionChange::before},
            Field{"after", &NetworkConnectionChange::after},
        };
    }
};

/// A paired device connected or disconnected.
struct BluetoothConnectionChange {
    std::optional<std::string> deviceClass;
    std::optional<ObservedSession> session;
    std::string deviceName;
    bool connected = false;

    bool operator==(const BluetoothConnectionChange&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"deviceClass", &BluetoothConnectionChange::deviceClass, Shown},
            Field{"session", &BluetoothConnectionChange::session},
            Field{"deviceName", &BluetoothConnectionChange::deviceName, Private},
            Field{"connected", &BluetoothConnectionChange::connected},
        };
    }
};

/// Details of a Wi-Fi network.
struct WiFiContext {
    /// Present only if the user allowed recording it.
    std::optional<std::string> networkName;
    /// "2.4 GHz", "5 GHz" or "6 GHz".
    std::optional<std::string> band;
    std::optional<std::int64_t> channel;
    std::optional<std::string> security;
    std::optional<std::int64_t> signalDBM;
    std::optional<double> linkRateMbps;

    bool operator==(const WiFiContext&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"networkName", &WiFiContext::networkName, Private},
            Field{"band", &WiFiContext::band, Shown},
            Field{"channel", &WiFiContext::channel},
            Field{"security", &WiFiContext::security, Shown},
            Field{"signalDBM", &WiFiContext::signalDBM},
            Field{"linkRateMbps", &WiFiContext::linkRateMbps},
        };
    }
};

} // namespace tidemark
