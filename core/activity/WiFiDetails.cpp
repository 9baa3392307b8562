#include "core/activity/WiFiDetails.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <string_view>

namespace tidemark::WiFiDetails {

namespace {

/// Indexed by number; empty where there is no label.
constexpr auto bands = std::to_array<std::string_view>({"", "2.4 GHz", "5 GHz", "6 GHz"});

constexpr auto securities = std::to_array<std::string_view>({
    "Open",
    "WEP",
    "WPA Personal",
    "WPA / WPA2 Personal",
    "WPA2 Personal",
    "", // Any personal kind.
    "", // Dynamic WEP.
    "WPA Enterprise",
    "WPA / WPA2 Enterprise",
    "WPA2 Enterprise",
    "", // Any enterprise kind.
    "WPA3 Personal",
    "WPA3 Enterprise",
    "WPA2 / WPA3 Personal",
});

std::optional<std::string> labelOf(std::int64_t number, std::span<const std::string_view> labels) {
    if (number < 0 || number >= std::ssize(labels))
        return std::nullopt;
    const std::string_view label = labels[static_cast<std::size_t>(number)];
    return label.empty() ? std::nullopt : std::optional(std::string(label));
}

} // namespace

std::optional<std::string> bandLabel(std::int64_t band) {
    return labelOf(band, bands);
}

std::optional<std::string> securityLabel(std::int64_t security) {
    return labelOf(security, securities);
}

WiFiContext context(const Reading& reading, bool nameAllowed) {
    WiFiContext context;
    if (nameAllowed)
        context.networkName = reading.networkName;
    if (reading.band)
        context.band = bandLabel(*reading.band);
    context.channel = reading.channel;
    if (reading.security)
        context.security = securityLabel(*reading.security);
    if (reading.rssi < 0)
        context.signalDBM = reading.rssi;
    if (std::isfinite(reading.transmitRate) && reading.transmitRate > 0)
        context.linkRateMbps = reading.transmitRate;
    return context;
}

std::optional<Link> link(const std::vector<Interface>& interfaces) {
    std::optional<Link> up;
    for (const auto& interface : interfaces)
        if (interface.active == true)
            up = Link{true, interface.name};
    if (up)
        return up;
    const bool allDown = std::ranges::all_of(
        interfaces, [](const auto& interface) { return interface.active == false; });
    return allDown && !interfaces.empty() ? std::optional(Link{}) : std::nullopt;
}

} // namespace tidemark::WiFiDetails
