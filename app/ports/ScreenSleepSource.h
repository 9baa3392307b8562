#pragma once

namespace tidemark {

/// Follows for its lifetime whether the screens sleep or are locked, and posts `screensDidSleep`
/// and `screensDidWake` to a `NotificationCenter`, once per change. Posts nothing when the system
/// does not report it. Main thread only.
class ScreenSleepSource {
public:
    virtual ~ScreenSleepSource() = default;
};

} // namespace tidemark
