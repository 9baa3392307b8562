#pragma once

#include <functional>

namespace tidemark {

/// Keeps Control–Shift–Space assigned to this program, in whatever window it is pressed, for its
/// lifetime. Main thread only.
class GlobalShortcut {
public:
    /// Called from the event loop.
    struct Observer {
        std::function<void()> pressed;
        /// True when the keys are assigned to this program; false when another program has them,
        /// and when the display is lost.
        std::function<void(bool isAvailable)> availabilityChanged;
    };

    virtual ~GlobalShortcut() = default;
};

} // namespace tidemark
