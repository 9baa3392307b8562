#pragma once

#include "core/records/ConnectionActivity.h"

#include <optional>
#include <string>

namespace tidemark {

/// The Wi-Fi link at one moment, with the known details of its network.
struct WiFiObservation {
    bool connected = false;
    std::optional<WiFiContext> context;

    std::optional<std::string> networkName() const {
        return context ? context->networkName : std::nullopt;
    }

    /// Compares only link and name: another channel or access point of the same network, or another
    /// signal strength, is not a change.
    bool operator==(const WiFiObservation& other) const {
        return connected == other.connected && networkName() == other.networkName();
    }
};

} // namespace tidemark
