#pragma once

#include <optional>

namespace tidemark {

/// Reads whether the machine saves power at the cost of speed, and follows the mode for its
/// lifetime. Main thread only; does not block.
///
/// It is created with a function `didChange`, which it calls whenever `isOn` returns another value
/// than before. The call comes from the event loop, never from the constructor or destructor.
class LowPowerModeSource {
public:
    virtual ~LowPowerModeSource() = default;

    /// The mode in effect; absent while it is not known and on a machine without one.
    virtual std::optional<bool> isOn() const = 0;
};

} // namespace tidemark
