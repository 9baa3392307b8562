#pragma once

#include "core/records/SystemActivity.h"

#include <optional>

namespace tidemark {

/// Turns readings of the Bluetooth radio into records of its changes.
class BluetoothPowerHistory {
public:
    /// `value` is true for on, absent when the state is not known. Returns the record of a change
    /// between two successive known readings; after an unknown one the next is a new starting
    /// point.
    std::optional<SystemActivity> receive(std::optional<bool> value, Date at);
    /// Makes the next known reading a new starting point.
    void reset() { previous.reset(); }

private:
    std::optional<bool> previous;
};

} // namespace tidemark
