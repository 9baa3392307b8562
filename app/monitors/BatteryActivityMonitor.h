#pragma once

#include "app/base/AppClock.h"
#include "app/base/NotificationCenter.h"
#include "app/base/Published.h"
#include "app/base/TaskScope.h"
#include "app/monitors/ActivityMonitor.h"
#include "app/monitors/SettlingTimer.h"
#include "app/ports/BatterySource.h"
#include "app/ports/LowPowerModeSource.h"
#include "app/preferences/Preferences.h"
#include "core/activity/BatteryHistory.h"
#include "core/activity/LowPowerModeHistory.h"

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// Records changes of the power source, of the internal battery and of the low power mode, while
/// the setting is on. Main thread only.
///
/// The sources exist only while they are followed: not while the setting is off, and not during a
/// sleep of the machine, so that no reading from before it outlives it.
class BatteryActivityMonitor final : public Observable, public ActivityMonitor {
    Q_OBJECT

public:
    static constexpr std::string_view notYet = "Not observing yet";
    static constexpr std::string_view off = "Off";
    static constexpr std::string_view unavailable = "Battery observation unavailable";
    static constexpr std::string_view observing = "Observing power and battery changes";
    static constexpr std::string_view noBattery =
        "Observing power mode · no readable internal battery";

    /// The longest wait for a reading after a wake, in seconds.
    static constexpr double mostWait = 5;

    /// The constructor's arguments. References must outlive the monitor.
    struct Setup {
        Preferences& preferences;
        /// Posts the sleep and wake of the machine.
        NotificationCenter& workspaceCenter;
        /// Create the sources; may return null.
        std::function<std::unique_ptr<BatterySource>(std::function<void()> didChange)> battery;
        std::function<std::unique_ptr<LowPowerModeSource>(std::function<void()> didChange)>
            lowPowerMode;
        AppClock& clock = AppClock::system();
    };

    explicit BatteryActivityMonitor(Setup setup);
    ~BatteryActivityMonitor() override;

    void start(Record record) override;
    void stop() override;

    /// What is observed at present, for the user.
    Published<std::string> status{this, std::string(notYet)};
    /// Why nothing can be observed here, as a sentence; absent where the power source or the low
    /// power mode can, and while that is not known.
    std::optional<std::string> absence() const;
    bool isEnabled() const;

    /// The present reading; absent without a battery and while this is off. While nothing is known
    /// yet, as right after a wake, waits for a reading, for `mostWait` at most.
    QCoro::Task<std::optional<BatteryObservation>> reading();

private:
    bool isWanted() const;
    void applySetting();
    void subscribe();
    void unsubscribe();
    void sleep();
    void wake();
    void observe();
    void observeLowPowerMode();
    void settle(Date at);
    void endWaits();

    const Setup setup;
    Record record;
    bool sleeping = false;
    BatteryHistory history;
    LowPowerModeHistory lowPowerHistory;
    std::unique_ptr<BatterySource> battery;
    std::unique_ptr<LowPowerModeSource> lowPowerMode;
    std::vector<NotificationCenter::Token> tokens;
    /// Requested when a reading is there, or when there will be none.
    std::stop_source waitingForReading;
    TaskScope tasks;
    SettlingTimer settling{setup.clock, tasks};
};

} // namespace tidemark
