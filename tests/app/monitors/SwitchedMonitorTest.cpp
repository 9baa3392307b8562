#include "app/monitors/SwitchedMonitor.h"

#include "tests/app/support/MonitorFixture.h"

using namespace tidemark;

namespace {

/// Logs when it is to follow and to pause, and can make a record at any time.
class LoggedMonitor final : public SwitchedMonitor {
public:
    LoggedMonitor(const Surroundings& surroundings, double wakeDelay)
        : SwitchedMonitor(surroundings, {.name = "Test",
                                         .source = SettingSource::battery,
                                         .setting = preferenceKeys::batteryHistoryEnabled,
                                         .wakeDelay = wakeDelay}) {}
    ~LoggedMonitor() override { end(); }

    void make() { record(SystemActivity::observed(SystemActivity::Kind::volumeChanged, {})); }
    /// The functions of the monitor that were called since the last call of `calls`.
    std::string calls() { return std::exchange(log, ""); }

private:
    void follow(Beginning beginning) override {
        status = "Following";
        log += beginning == Beginning::start ? "start " : "resume ";
    }
    void pause() override { log += "pause "; }

    std::string log;
};

struct SwitchedMonitorTest : test::MonitorFixture {
    void turn(bool on) { set(preferenceKeys::batteryHistoryEnabled, on); }
    /// Lets the monitor make a record and returns how many arrive: one while it follows, otherwise
    /// none.
    std::size_t recorded() {
        records.clear();
        monitor.make();
        return records.size();
    }

    LoggedMonitor monitor{surroundings, 5};
};

} // namespace

TEST_F(SwitchedMonitorTest, FollowsWhileItIsOnAndTheMachineAwake) {
    struct Step {
        const char* what;
        std::function<void()> take;
        std::string_view calls;
        std::string_view status;
    };
    const auto post = [&](Notification notification) {
        return [this, notification] { workspace.post(notification); };
    };
    const Step steps[] = {
        {"before the start", [] {}, "", "Not observing yet"},
        {"asleep before the start", post(notification::willSleep), "", "Not observing yet"},
        {"start", [&] { start(monitor); }, "start ", "Following"},
        {"a second start", [&] { start(monitor); }, "", "Following"},
        {"off", [&] { turn(false); }, "pause ", "Off"},
        {"a sleep while off", post(notification::willSleep), "", "Off"},
        {"on during the sleep", [&] { turn(true); }, "", "Paused during sleep"},
        {"awake", post(notification::didWake), "", "Paused during sleep"},
        {"just before the delay ends", [&] { advance(4.9); }, "", "Paused during sleep"},
        {"a second sleep", post(notification::willSleep), "", "Paused during sleep"},
        {"long asleep", [&] { advance(100); }, "", "Paused during sleep"},
        {"awake again", post(notification::didWake), "", "Paused during sleep"},
        {"after the delay", [&] { advance(5); }, "resume ", "Following"},
        {"awake without a sleep", post(notification::didWake), "pause ", "Paused during sleep"},
        {"after that", [&] { advance(5); }, "resume ", "Following"},
        {"asleep", post(notification::willSleep), "pause ", "Paused during sleep"},
        {"for unknown time", post(notification::sleepAbandoned), "", "Paused during sleep"},
        {"when that is over", [&] { advance(5); }, "resume ", "Following"},
        {"stop", [&] { monitor.stop(); }, "pause ", "Paused"},
        {"awake after the stop", post(notification::didWake), "", "Paused"},
        {"off after the stop", [&] { turn(false); }, "", "Off"},
        {"start while off", [&] { start(monitor); }, "", "Off"},
        {"on at last", [&] { turn(true); }, "resume ", "Following"},
    };
    for (const auto& [what, take, calls, status] : steps) {
        take();
        EXPECT_EQ(monitor.calls(), calls) << what;
        EXPECT_EQ(monitor.statuses().at(0).text, status) << what;
        EXPECT_EQ(recorded(), status == "Following") << what;
    }
}

TEST_F(SwitchedMonitorTest, FollowsAtOnceAfterAWakeWithoutADelay) {
    LoggedMonitor prompt{surroundings, 0};
    start(prompt);
    workspace.post(notification::willSleep);
    workspace.post(notification::didWake);
    EXPECT_EQ(prompt.calls(), "start pause resume ");
}
