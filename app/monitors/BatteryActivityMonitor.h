#pragma once

#include "app/monitors/SwitchedMonitor.h"
#include "app/ports/BatterySource.h"
#include "app/ports/LowPowerModeSource.h"
#include "core/activity/BatteryHistory.h"
#include "core/activity/LowPowerModeHistory.h"

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

namespace tidemark {

/// Records changes of the power source, of the internal battery and of the low power mode. Main
/// thread only.
///
/// The sources exist only while they are followed: not while the setting is off, and not during a
/// sleep of the machine, so that no reading from before the sleep is used after it.
class BatteryActivityMonitor final : public SwitchedMonitor {
public:
    static constexpr std::string_view unavailable = "Battery observation unavailable";
    static constexpr std::string_view observing = "Observing power and battery changes";
    static constexpr std::string_view noBattery =
        "Observing power mode · no readable internal battery";

    /// The longest wait for a reading after a wake, in seconds.
    static constexpr double mostWait = 5;

    /// Functions that create the sources. They do not return null.
    struct Sources {
        std::function<std::unique_ptr<BatterySource>(std::function<void()> didChange)> battery;
        std::function<std::unique_ptr<LowPowerModeSource>(std::function<void()> didChange)>
            lowPowerMode;
    };

    BatteryActivityMonitor(const Surroundings& surroundings, Sources sources);
    ~BatteryActivityMonitor() override;

    /// Why neither the power source nor the low power mode can be observed; absent where one of
    /// them can, and while this monitor is not following.
    Absence absence() const override;

    /// The present reading; absent without a battery and while this is off. While nothing is known
    /// yet, as right after a wake, waits for a reading, for `mostWait` at most.
    QCoro::Task<std::optional<BatteryObservation>> reading();

private:
    void follow(Beginning beginning) override;
    void pause() override;
    void observe();
    void observeLowPowerMode();
    void settle(Date at);
    void endWaits();

    const Sources sources;
    BatteryHistory history;
    LowPowerModeHistory lowPowerHistory;
    std::unique_ptr<BatterySource> battery;
    std::unique_ptr<LowPowerModeSource> lowPowerMode;
    /// Its stop is requested when a reading is there, or when there will be none.
    std::stop_source waitingForReading;
    SettlingTimer settling{clock(), tasks};
};

} // namespace tidemark
