#include "app/monitors/BatteryActivityMonitor.h"

#include "app/preferences/PreferenceKeys.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/app/support/MemoryPreferences.h"

#include <gtest/gtest.h>

using namespace tidemark;
using State = BatterySource::State;

namespace {

/// What the test lets the sources of the monitor report.
struct Machine {
    State state = State::unknown;
    std::optional<BatteryObservation> battery;
    std::optional<bool> isSavingPower;
    std::string_view absence;
    /// Empty while the monitor follows nothing.
    std::function<void()> batteryChanged;
    std::function<void()> modeChanged;
};

class Battery final : public BatterySource {
public:
    explicit Battery(Machine& machine) : machine(machine) {}
    ~Battery() override { machine.batteryChanged = nullptr; }
    State state() const override { return machine.state; }
    std::optional<BatteryObservation> reading() const override { return machine.battery; }
    std::optional<std::string> absence() const override { return std::string(machine.absence); }

private:
    Machine& machine;
};

class Mode final : public LowPowerModeSource {
public:
    explicit Mode(Machine& machine) : machine(machine) {}
    ~Mode() override { machine.modeChanged = nullptr; }
    std::optional<bool> isOn() const override { return machine.isSavingPower; }

private:
    Machine& machine;
};

struct BatteryActivityMonitorTest : testing::Test {
    test::MemoryPreferences preferences;
    NotificationCenter workspace;
    test::ManualAppClock clock;
    Machine machine;
    std::vector<SystemActivity> records;
    BatteryActivityMonitor monitor{{
        .preferences = preferences,
        .workspaceCenter = workspace,
        .battery =
            [this](auto didChange) {
                machine.batteryChanged = std::move(didChange);
                return std::make_unique<Battery>(machine);
            },
        .lowPowerMode =
            [this](auto didChange) {
                machine.modeChanged = std::move(didChange);
                return std::make_unique<Mode>(machine);
            },
        .clock = clock,
    }};

    void start() {
        monitor.start([this](SystemActivity activity) { records.push_back(std::move(activity)); });
    }
    void show(bool external, std::int64_t percentage, std::optional<bool> charging = {}) {
        machine.state = State::following;
        machine.battery = BatteryObservation{external, percentage, charging, {}};
        machine.batteryChanged();
    }
    void showState(State state) {
        machine.state = state;
        machine.battery.reset();
        machine.batteryChanged();
    }
    void saves(std::optional<bool> power) {
        machine.isSavingPower = power;
        machine.modeChanged();
    }
    void turn(bool on) {
        preferences.set(preference::batteryHistoryEnabled.name, on);
        test::settle();
    }
    /// The titles of all records since the last call.
    std::string titles() {
        test::settle();
        std::string text;
        for (const auto& record : std::exchange(records, {}))
            text += record.title() + ", ";
        return text;
    }
    std::string status() const { return *monitor.status; }
};

} // namespace

TEST_F(BatteryActivityMonitorTest, RecordsWhatLasts) {
    start();
    show(true, 80, true);
    clock.advance(2);
    show(false, 79);
    const Date unplugged = clock.now();
    clock.advance(1);
    // A repeated notification does not begin the wait again.
    machine.batteryChanged();
    clock.advance(1);
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].timestamp, unplugged);
    EXPECT_EQ(records[0].batteryActivity->observation.percentage, 79);
    EXPECT_EQ(titles(), "Switched to Battery, ");
    // Brief, and interrupted by the loss of the reading.
    show(true, 79);
    clock.advance(1);
    show(false, 79);
    clock.advance(5);
    show(true, 79);
    clock.advance(1);
    showState(State::unknown);
    show(false, 78);
    clock.advance(5);
    EXPECT_EQ(titles(), "");
    show(true, 78);
    clock.advance(2);
    EXPECT_EQ(titles(), "Power Connected, ");
}

TEST_F(BatteryActivityMonitorTest, RecordsTheLowPowerMode) {
    start();
    saves(false);
    show(false, 30);
    for (const auto& [power, expected] :
         std::initializer_list<std::pair<std::optional<bool>, const char*>>{
             {true, "Low Power Mode Enabled, "},
             {true, ""},
             // The service has restarted.
             {{}, ""},
             {false, ""},
             {true, "Low Power Mode Enabled, "}}) {
        saves(power);
        if (!records.empty()) {
            EXPECT_EQ(records[0].powerObservation->percentage, 30);
        }
        EXPECT_EQ(titles(), expected);
    }
    // A change of the battery reads the mode as well.
    machine.isSavingPower = false;
    show(false, 29);
    EXPECT_EQ(titles(), "Low Power Mode Disabled, ");
}

TEST_F(BatteryActivityMonitorTest, StartsAnewAfterSleepAndWhenTurnedOn) {
    const std::pair<const char*, std::function<void()>> gaps[] = {
        {"sleep",
         [&] {
             workspace.post(notification::willSleep);
             EXPECT_FALSE(machine.batteryChanged || machine.modeChanged);
             workspace.post(notification::didWake);
         }},
        {"a sleep of unknown end",
         [&] {
             workspace.post(notification::willSleep);
             workspace.post(notification::sleepAbandoned);
         }},
        {"setting",
         [&] {
             turn(false);
             EXPECT_FALSE(machine.batteryChanged || machine.modeChanged);
             EXPECT_EQ(status(), "Off");
             turn(true);
         }},
        {"restart",
         [&] {
             monitor.stop();
             EXPECT_FALSE(machine.batteryChanged || machine.modeChanged);
             start();
         }},
    };
    start();
    for (const auto& [what, gap] : gaps) {
        saves(false);
        show(true, 80);
        clock.advance(2);
        titles();
        // A change that is pending when the gap begins, and another one during it.
        show(false, 80);
        clock.advance(1);
        machine.isSavingPower = true;
        machine.battery->percentage = 18;
        gap();
        clock.advance(10);
        EXPECT_EQ(titles(), "") << what;
        show(true, 18);
        clock.advance(2);
        EXPECT_EQ(titles(), "Power Connected, ") << what;
    }
}

TEST_F(BatteryActivityMonitorTest, ShowsWhatItObserves) {
    EXPECT_EQ(status(), "Not observing yet");
    turn(false);
    start();
    EXPECT_EQ(status(), "Off");
    turn(true);
    EXPECT_EQ(status(), "Not observing yet");
    machine.absence = "There is none.";
    showState(State::unavailable);
    EXPECT_EQ(status(), "Battery observation unavailable");
    EXPECT_EQ(monitor.absence(), "There is none.");
    // The mode is observed without a battery as well.
    saves(false);
    EXPECT_EQ(monitor.absence(), std::nullopt);
    saves(true);
    EXPECT_EQ(titles(), "Low Power Mode Enabled, ");
    showState(State::following);
    EXPECT_EQ(status(), "Observing power mode · no readable internal battery");
    show(true, 50);
    EXPECT_EQ(status(), "Observing power and battery changes");
}

TEST_F(BatteryActivityMonitorTest, WaitsForAReadingAfterAWake) {
    const auto percentage = [&] {
        const auto reading = test::await(monitor.reading());
        return reading ? *reading->percentage : -1;
    };
    EXPECT_EQ(percentage(), -1);
    start();
    show(true, 80);
    EXPECT_EQ(percentage(), 80);
    workspace.post(notification::willSleep);
    machine.state = State::unknown;
    machine.battery.reset();
    auto reading = monitor.reading();
    workspace.post(notification::didWake);
    show(true, 60);
    EXPECT_EQ(test::await(std::move(reading))->percentage, 60);

    // Not for ever, not when there is no service, and not when the user turns it off.
    machine.state = State::unknown;
    machine.battery.reset();
    auto late = monitor.reading();
    clock.advance(BatteryActivityMonitor::mostWait);
    EXPECT_FALSE(test::await(std::move(late)));
    auto absent = monitor.reading();
    showState(State::unavailable);
    EXPECT_FALSE(test::await(std::move(absent)));
    machine.state = State::unknown;
    auto unwanted = monitor.reading();
    turn(false);
    EXPECT_FALSE(test::await(std::move(unwanted)));
}
