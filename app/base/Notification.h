#pragma once

#include <string_view>

namespace tidemark {

/// An event of the application or of the machine, identified by its name.
struct Notification {
    std::string_view name;

    bool operator==(const Notification&) const = default;
};

namespace notification {

// Events of the application.
inline constexpr Notification applicationDidBecomeActive{"applicationDidBecomeActive"};

// Events of the machine and of the user's session on it.
inline constexpr Notification willSleep{"willSleep"};
inline constexpr Notification didWake{"didWake"};
/// Posted instead of `didWake` when the source of `willSleep` has stopped, so that it is not known
/// whether and when the machine wakes.
inline constexpr Notification sleepAbandoned{"sleepAbandoned"};
inline constexpr Notification screensDidSleep{"screensDidSleep"};
inline constexpr Notification screensDidWake{"screensDidWake"};
inline constexpr Notification sessionDidBecomeActive{"sessionDidBecomeActive"};
inline constexpr Notification sessionDidResignActive{"sessionDidResignActive"};
inline constexpr Notification willPowerOff{"willPowerOff"};

} // namespace notification

} // namespace tidemark
