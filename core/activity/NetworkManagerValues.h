#pragma once

#include "core/activity/WiFiDetails.h"

#include <cstdint>
#include <optional>
#include <string>

/// The meaning of property values of NetworkManager (https://networkmanager.dev/docs/api). Pure
/// functions.
namespace tidemark::NetworkManagerValues {

/// Whether a value of the property `Metered` means that the connection costs money; absent when
/// that is not known.
std::optional<bool> isMetered(std::uint32_t metered);

/// Whether a Wi-Fi device in this `State` is associated with a network; absent when NetworkManager
/// does not manage the device.
std::optional<bool> isLinkUp(std::uint32_t deviceState);

/// Properties of an access point and of the device that is connected to it.
struct AccessPoint {
    std::uint32_t flags = 0;
    std::uint32_t wpaFlags = 0;
    std::uint32_t rsnFlags = 0;
    /// MHz; 0 when not known.
    std::uint32_t frequency = 0;
    /// The bit rate of the access point, kbit/s.
    std::uint32_t maxBitrate = 0;
    /// The bit rate of the connection, kbit/s; 0 when not known.
    std::uint32_t bitrate = 0;
    /// The bytes of the name; absent when they were not read.
    std::optional<std::string> ssid{};

    bool operator==(const AccessPoint&) const = default;
};

/// The reading has no signal strength: `Strength` is a percentage that can't be converted to dBm.
WiFiDetails::Reading reading(const AccessPoint& point);

} // namespace tidemark::NetworkManagerValues
