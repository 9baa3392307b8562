#include "core/activity/LowPowerModeHistory.h"

#include <utility>

namespace tidemark {

std::optional<SystemActivity> LowPowerModeHistory::receive(bool enabled, Date at) {
    if (std::exchange(previous, enabled).value_or(enabled) == enabled)
        return std::nullopt;
    auto activity = SystemActivity::observed(SystemActivity::Kind::lowPowerModeChanged, at);
    activity.lowPowerModeEnabled = enabled;
    return activity;
}

} // namespace tidemark
