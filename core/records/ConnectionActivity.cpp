#include "core/records/ConnectionActivity.h"

namespace tidemark {

NetworkConnectionState NetworkConnectionState::make(Availability availability,
                                                    std::set<Interface> interfaces,
                                                    std::optional<bool> expensive,
                                                    std::optional<bool> constrained) {
    if (availability != Availability::available)
        interfaces.clear();
    return {availability, expensive, constrained, std::move(interfaces)};
}

std::string NetworkConnectionState::label() const {
    if (availability != Availability::available || interfaces.empty())
        return std::string(rawValue(availability));
    std::string names;
    for (const Interface interface : interfaces)
        names += (names.empty() ? "" : " + ") + std::string(rawValue(interface));
    return names;
}

std::string_view NetworkConnectionChange::title() const {
    using enum NetworkConnectionState::Availability;
    const bool was = before.availability == available;
    const bool is = after.availability == available;
    if (was && !is)
        return "Network Connection Unavailable";
    if (!was && is)
        return "Network Connection Available";
    return "Network Connection Changed";
}

} // namespace tidemark
