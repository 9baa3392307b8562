#pragma once

#include "core/records/ConnectionActivity.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the interfaces of IEEE 802.11 tell, in the words of a record. Bands and kinds of security
/// have the numbers of CoreWLAN (CWChannelBand, CWSecurity), onto which other services are mapped.
namespace tidemark::WiFiDetails {

/// "2.4 GHz", "5 GHz" or "6 GHz"; absent for other numbers.
std::optional<std::string> bandLabel(std::int64_t band);
/// Such as "WPA2 Personal"; absent for kinds that say nothing definite.
std::optional<std::string> securityLabel(std::int64_t security);

/// One interface as it reads; absent what does not.
struct Reading {
    std::optional<std::int64_t> band;
    std::optional<std::int64_t> channel;
    std::optional<std::int64_t> security;
    /// Mbit/s; 0 when not known.
    double transmitRate = 0;
    /// dBm; 0 when not known.
    std::int64_t rssi = 0;
    std::optional<std::string> networkName;
};

/// The record of a reading, with the name of the network only when that is allowed.
WiFiContext context(const Reading& reading, bool nameAllowed);

/// One interface and whether its link is up; absent when that can't be read.
struct Interface {
    std::string name;
    std::optional<bool> active;
};

struct Link {
    bool connected = false;
    /// Whose details tell of the link: the last of those that are up.
    std::optional<std::string> interfaceName;

    bool operator==(const Link&) const = default;
};

/// The link of all interfaces together: up when one is, down when all are known to be; absent
/// otherwise, and when there are none.
std::optional<Link> link(const std::vector<Interface>& interfaces);

} // namespace tidemark::WiFiDetails
