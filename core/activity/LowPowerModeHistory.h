#pragma once

#include "core/records/SystemActivity.h"

#include <optional>

namespace tidemark {

/// Low Power Mode, compared from one reading to the next.
class LowPowerModeHistory {
public:
    /// The record of a change; absent for the first reading and for one that repeats.
    std::optional<SystemActivity> receive(bool enabled, Date at);
    /// The next reading is a new starting point.
    void reset() { previous.reset(); }

private:
    std::optional<bool> previous;
};

} // namespace tidemark
