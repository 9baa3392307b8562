#pragma once

#include "core/records/SystemActivity.h"

#include <optional>

namespace tidemark {

/// Turns readings of Low Power Mode into records of its changes.
class LowPowerModeHistory {
public:
    /// The record of a change; absent for the first reading and for one that equals the last.
    std::optional<SystemActivity> receive(bool enabled, Date at);
    /// Makes the next reading a new starting point.
    void reset() { previous.reset(); }

private:
    std::optional<bool> previous;
};

} // namespace tidemark
