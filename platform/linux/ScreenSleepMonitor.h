#pragma once

#include "app/base/NotificationCenter.h"
#include "app/ports/ScreenSleepSource.h"
#include "platform/linux/GuardedSubscription.h"
#include "platform/linux/LogindSession.h"
#include "platform/linux/Rereading.h"

#include <memory>
#include <optional>
#include <vector>

namespace tidemark {

/// Whether the screens sleep or are locked, as the screen savers of the desktops, the display
/// server of GNOME and logind report it. They count as asleep while a screen saver or the display
/// server says so. logind counts only where no screen saver answers, because a locker that was
/// killed leaves logind's hint set for ever. Posts `screensDidSleep` and `screensDidWake`. Lockers
/// that report to no service, such as swaylock, are not noticed. Main thread only.
class ScreenSleepMonitor final : public ScreenSleepSource {
public:
    /// `center` must outlive the monitor.
    ScreenSleepMonitor(const MessageBus& system, const MessageBus& session,
                       NotificationCenter& center);
    ~ScreenSleepMonitor() override;

    bool areAsleep() const { return asleep; }

private:
    class Saver;

    void update();
    void followDisplays();
    void readDisplays();

    NotificationCenter& center;
    bool asleep = false;
    std::vector<std::unique_ptr<Saver>> savers;
    bool isPowerSaving = false;
    std::optional<bool> isLocked;
    BusService displays;
    std::optional<GuardedSubscription> signalsOfDisplays;
    Rereading rereadingDisplays{[this] { readDisplays(); }};
    LogindSession session;
};

} // namespace tidemark
