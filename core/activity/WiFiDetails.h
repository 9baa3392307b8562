#pragma once

#include "core/records/ConnectionActivity.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Turns readings of Wi-Fi interfaces into the texts of a record. Bands and kinds of security have
/// the numbers of CoreWLAN (CWChannelBand, CWSecurity); those of other services are mapped to them.
namespace tidemark::WiFiDetails {

/// "2.4 GHz", "5 GHz" or "6 GHz"; absent for other numbers.
std::optional<std::string> bandLabel(std::int64_t band);
/// Such as "WPA2 Personal"; absent for unknown and ambiguous kinds.
std::optional<std::string> securityLabel(std::int64_t security);

/// The properties of one interface; absent where they can't be read.
struct Reading {
    std::optional<std::int64_t> band;
    std::optional<std::int64_t> channel;
    std::optional<std::int64_t> security;
    /// Mbit/s; 0 when not known.
    double transmitRate = 0;
    /// dBm; 0 when not known.
    std::int64_t rssi = 0;
    std::optional<std::string> networkName;

    bool operator==(const Reading&) const = default;
};

/// The record of a reading. It has the name of the network only if that is allowed.
WiFiContext context(const Reading& reading, bool nameAllowed);

/// One interface, and whether its link is up; absent when that can't be read.
struct Interface {
    std::string name;
    std::optional<bool> active;

    bool operator==(const Interface&) const = default;
};

struct Link {
    bool connected = false;
    /// The interface whose details describe the link: the last of those that are up.
    std::optional<std::string> interfaceName;

    bool operator==(const Link&) const = default;
};

/// The link of all interfaces together: up if one is up, down if all are known to be down; absent
/// otherwise and when there are no interfaces.
std::optional<Link> link(const std::vector<Interface>& interfaces);

} // namespace tidemark::WiFiDetails
