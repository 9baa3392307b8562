#include "core/activity/NetworkManagerValues.h"

#include "core/base/Text.h"

#include <algorithm>
#include <array>

namespace tidemark::NetworkManagerValues {

namespace {

// NM80211ApFlags and NM80211ApSecurityFlags.
constexpr std::uint32_t privacy = 0x1;
constexpr std::uint32_t psk = 0x100;
constexpr std::uint32_t enterprise = 0x200;
constexpr std::uint32_t sae = 0x400;
constexpr std::uint32_t opportunistic = 0x800;
constexpr std::uint32_t suiteB = 0x2000;
constexpr std::uint32_t keyManagement = psk | enterprise | sae | opportunistic | suiteB;

/// The numbers of CWSecurity.
enum Security : std::int64_t {
    open = 0,
    wep = 1,
    wpaPersonal = 2,
    wpaMixedPersonal = 3,
    wpa2Personal = 4,
    wpaEnterprise = 7,
    wpaMixedEnterprise = 8,
    wpa2Enterprise = 9,
    wpa3Personal = 11,
    wpa3Enterprise = 12,
    wpa3Transition = 13,
};

std::optional<std::int64_t> withoutKeys(const AccessPoint& point) {
    if ((point.flags & privacy) == 0)
        return open;
    return (point.wpaFlags | point.rsnFlags) == 0 ? std::optional(wep) : std::nullopt;
}

std::optional<std::int64_t> security(const AccessPoint& point) {
    const std::uint32_t wpa = point.wpaFlags;
    const std::uint32_t rsn = point.rsnFlags;
    if (((wpa | rsn) & keyManagement) == 0)
        return withoutKeys(point);
    if ((rsn & suiteB) != 0)
        return wpa3Enterprise;
    if ((rsn & enterprise) != 0)
        return (wpa & enterprise) != 0 ? wpaMixedEnterprise : wpa2Enterprise;
    if ((wpa & enterprise) != 0)
        return wpaEnterprise;
    if ((rsn & sae) != 0)
        return (rsn & psk) != 0 ? wpa3Transition : wpa3Personal;
    if ((rsn & psk) != 0)
        return (wpa & psk) != 0 ? wpaMixedPersonal : wpa2Personal;
    return (wpa & psk) != 0 ? std::optional<std::int64_t>(wpaPersonal) : std::nullopt;
}

/// The channel of IEEE 802.11 at a frequency; absent where there is none.
std::optional<std::int64_t> channel(std::uint32_t megahertz) {
    struct Range {
        std::uint32_t first;
        std::uint32_t last;
        std::uint32_t base;
    };
    constexpr auto ranges = std::to_array<Range>(
        {{2412, 2472, 2407}, {4910, 4980, 4000}, {5000, 5895, 5000}, {5955, 7115, 5950}});
    if (megahertz == 2484)
        return 14;
    if (megahertz == 5935)
        return 2;
    for (const auto& [first, last, base] : ranges)
        if (megahertz >= first && megahertz <= last)
            return (megahertz - base) / 5;
    return std::nullopt;
}

/// The numbers of CWChannelBand.
std::optional<std::int64_t> band(std::uint32_t megahertz) {
    if (megahertz == 0 || megahertz >= 7126)
        return std::nullopt;
    if (megahertz < 2500)
        return 1;
    return megahertz < 5925 ? 2 : 3;
}

/// With iwd as its back end, NetworkManager reports these values for every access point.
bool hasInventedFrequency(const AccessPoint& point) {
    return point.frequency == 2417 && point.maxBitrate == 65'000;
}

/// A hidden network has an empty name or one of zero bytes.
std::optional<std::string> networkName(const std::optional<std::string>& ssid) {
    if (!ssid || std::ranges::all_of(*ssid, [](char byte) { return byte == '\0'; }))
        return std::nullopt;
    return textFromBytes(*ssid);
}

} // namespace

std::optional<bool> isMetered(std::uint32_t metered) {
    // NMMetered: 1 is yes and 3 guessed yes, 2 is no and 4 guessed no.
    if (metered == 1 || metered == 3)
        return true;
    return metered == 2 || metered == 4 ? std::optional(false) : std::nullopt;
}

std::optional<bool> isLinkUp(std::uint32_t deviceState) {
    // NMDeviceState: the link is up from the request of an address until the device begins to
    // disconnect.
    constexpr std::uint32_t unavailable = 20;
    constexpr std::uint32_t ipConfig = 70;
    constexpr std::uint32_t activated = 100;
    if (deviceState < unavailable)
        return std::nullopt;
    return deviceState >= ipConfig && deviceState <= activated;
}

WiFiDetails::Reading reading(const AccessPoint& point) {
    WiFiDetails::Reading reading;
    reading.security = security(point);
    reading.transmitRate = point.bitrate / 1000.0;
    reading.networkName = networkName(point.ssid);
    if (hasInventedFrequency(point))
        return reading;
    reading.band = band(point.frequency);
    reading.channel = channel(point.frequency);
    return reading;
}

} // namespace tidemark::NetworkManagerValues
