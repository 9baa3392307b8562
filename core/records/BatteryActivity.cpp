#include "core/records/BatteryActivity.h"

#include <algorithm>

namespace tidemark {

std::string ObservedSession::durationLabel() const {
    // The dates of a damaged document may be any distance apart.
    const double exact = std::min(duration() / 60, 1e15);
    if (exact < 1)
        return "Under a minute";
    const auto minutes = static_cast<std::int64_t>(exact);
    if (minutes < 60)
        return std::to_string(minutes) + " min";
    return std::to_string(minutes / 60) + " hr " + std::to_string(minutes % 60) + " min";
}

std::string_view BatteryActivity::title() const {
    switch (kind) {
    case Kind::powerConnected:
        return "Power Connected";
    case Kind::switchedToBattery:
        return "Switched to Battery";
    case Kind::fullyCharged:
        return "Battery Fully Charged";
    case Kind::low:
        return "Battery Low";
    }
    return "Battery Changed";
}

} // namespace tidemark
