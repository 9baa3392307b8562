#pragma once

#include "core/records/SystemActivity.h"

#include <optional>

namespace tidemark {

/// The Bluetooth radio, compared from one reading to the next.
class BluetoothPowerHistory {
public:
    /// `value` is true for on, absent when the state is not known. The record of a change between
    /// two known states that follow each other: an unknown one breaks the chain.
    std::optional<SystemActivity> receive(std::optional<bool> value, Date at);
    /// The next known reading is a new starting point.
    void reset() { previous.reset(); }

private:
    std::optional<bool> previous;
};

} // namespace tidemark
