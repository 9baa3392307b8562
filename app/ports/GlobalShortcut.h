#pragma once

#include <functional>
#include <string>

namespace tidemark {

/// Keeps Control–Shift–Space, or other keys that the user chose in the desktop, assigned to this
/// program, in whatever window they are pressed, for its lifetime. Main thread only.
class GlobalShortcut {
public:
    struct Availability {
        /// True when the keys are assigned to this program; false when another program has them,
        /// and when the display is lost.
        bool isAvailable = false;
        /// The keys as the desktop shows them; empty for Control–Shift–Space.
        std::string keys{};
        /// Why they are not assigned, as a sentence; empty when they are, and while that is not
        /// known.
        std::string obstacle{};

        bool operator==(const Availability&) const = default;
    };
    /// Called from the event loop.
    struct Observer {
        std::function<void()> pressed;
        std::function<void(const Availability& availability)> availabilityChanged;
    };

    virtual ~GlobalShortcut() = default;
};

} // namespace tidemark
