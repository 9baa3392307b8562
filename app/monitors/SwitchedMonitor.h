#pragma once

#include "app/base/AppClock.h"
#include "app/base/NotificationCenter.h"
#include "app/base/Published.h"
#include "app/base/TaskScope.h"
#include "app/monitors/ActivityMonitor.h"
#include "app/monitors/SettlingTimer.h"
#include "app/preferences/PreferenceKeys.h"

#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// A monitor that follows while its setting is on and the machine is awake. Nothing that was known
/// before a pause is compared with what follows it. Main thread only.
///
/// A monitor derives from this and implements `follow` and `pause`. Its destructor calls `end`.
class SwitchedMonitor : public ActivityMonitor {
public:
    /// What every monitor needs. The references must outlive it.
    struct Surroundings {
        const Preferences& preferences;
        /// Posts the sleep and wake of the machine.
        NotificationCenter& workspaceCenter;
        AppClock& clock = AppClock::system();
    };
    struct Traits {
        /// The name of its status, such as "Battery".
        std::string_view name;
        SettingSource source;
        const SwitchKey& setting;
        /// Seconds after a wake in which nothing is observed.
        double wakeDelay = 0;
    };

    void start(Record record) final;
    void stop() final;
    std::map<SettingSource, Absence> settingSources() const override {
        return {{traits.source, absence()}};
    }
    std::vector<MonitorStatus> statuses() const override;

    /// What is observed at present, or why nothing is.
    Published<std::string> status{this, std::string(notYet)};

protected:
    static constexpr std::string_view notYet = "Not observing yet";

    enum class Beginning {
        /// The monitor was started.
        start,
        /// The machine woke, or the setting was turned on.
        resumption,
    };

    SwitchedMonitor(const Surroundings& surroundings, const Traits& traits);

    /// Why its source has nothing to observe (`Absence`).
    virtual Absence absence() const { return std::nullopt; }
    /// Starts to follow, and sets `status`.
    virtual void follow(Beginning beginning) = 0;
    /// Stops following and forgets what was observed. Called once after each `follow`.
    virtual void pause() = 0;

    /// Stops, and waits for the coroutines of `tasks`.
    void end();
    /// True between `follow` and `pause`.
    bool isFollowing() const { return phase == Phase::following; }
    /// True while it is started and its setting is on, also during a sleep of the machine.
    bool isOn() const;
    /// Passes a record on while following; otherwise does nothing.
    void record(SystemActivity activity);
    AppClock& clock() const { return surroundings.clock; }
    const Preferences& preferences() const { return surroundings.preferences; }

    TaskScope tasks;

private:
    enum class Phase { off, stopped, asleep, following };

    Phase phaseWanted() const;
    void update(Beginning beginning);
    void noteSleep();
    void noteWake();

    const Surroundings surroundings;
    const Traits traits;
    Record passOn;
    bool isAsleep = false;
    Phase phase = Phase::stopped;
    std::vector<NotificationCenter::Token> tokens;
    SettlingTimer wakeTimer{surroundings.clock, tasks};
};

} // namespace tidemark
