#pragma once

#include "core/records/ConnectionActivity.h"

#include <optional>
#include <string>

namespace tidemark {

/// The Wi-Fi link at one moment, with what is known of its network.
struct WiFiObservation {
    bool connected = false;
    std::optional<WiFiContext> context;

    std::optional<std::string> networkName() const {
        return context ? context->networkName : std::nullopt;
    }

    /// Equal by link and name alone: moving to another channel or access point of one network, or
    /// a weaker signal, is no change.
    bool operator==(const WiFiObservation& other) const {
        return connected == other.connected && networkName() == other.networkName();
    }
};

} // namespace tidemark
