#include "app/monitors/BatteryActivityMonitor.h"

#include "tests/app/support/MonitorFixture.h"

using namespace tidemark;
using State = BatterySource::State;

namespace {

/// The values that the sources return to the monitor, and the callbacks of the monitor that a
/// source calls after a change. The callbacks are empty while the monitor does not follow.
struct Machine {
    State state = State::unknown;
    std::optional<BatteryObservation> battery;
    std::optional<bool> isSavingPower;
    std::string_view absence;
    std::function<void()> batteryChanged;
    std::function<void()> modeChanged;
};

struct Battery final : test::MadeUpSource<BatterySource, Machine> {
    using MadeUpSource::MadeUpSource;
    State state() const override { return values.state; }
    std::optional<BatteryObservation> reading() const override { return values.battery; }
    std::optional<std::string> absence() const override { return std::string(values.absence); }
};

struct Mode final : test::MadeUpSource<LowPowerModeSource, Machine> {
    using MadeUpSource::MadeUpSource;
    std::optional<bool> isOn() const override { return values.isSavingPower; }
};

struct BatteryActivityMonitorTest : test::MonitorFixture {
    Machine machine;
    BatteryActivityMonitor monitor{
        surroundings,
        {.battery = Battery::creator<Battery>(machine, machine.batteryChanged),
         .lowPowerMode = Mode::creator<Mode>(machine, machine.modeChanged)}};

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
    void turn(bool on) { set(preferenceKeys::batteryHistoryEnabled, on); }
};

} // namespace

TEST_F(BatteryActivityMonitorTest, RecordsWhatLasts) {
    start(monitor);
    show(true, 80, true);
    advance(2);
    show(false, 79);
    advance(1);
    // A repeated notification does not begin the wait again.
    machine.batteryChanged();
    advance(1);
    EXPECT_EQ(titles(), "Switched to Battery 2, ");
    EXPECT_EQ(last.batteryActivity->observation.percentage, 79);
    // A change is dropped if the reading is lost or the setting turned off before it has settled.
    show(true, 79);
    advance(1);
    showState(State::unknown);
    show(false, 78);
    advance(5);
    show(true, 78);
    advance(1);
    turn(false);
    EXPECT_FALSE(machine.batteryChanged || machine.modeChanged);
    turn(true);
    advance(5);
    EXPECT_EQ(titles(), "");
    show(false, 78);
    advance(2);
    EXPECT_EQ(titles(), "Switched to Battery 16, ");
}

TEST_F(BatteryActivityMonitorTest, RecordsTheLowPowerMode) {
    start(monitor);
    saves(false);
    show(false, 30);
    for (const auto& [power, expected] :
         std::initializer_list<std::pair<std::optional<bool>, const char*>>{
             {true, "Low Power Mode Enabled 0, "},
             {true, ""},
             // The service has restarted.
             {{}, ""},
             {false, ""},
             {true, "Low Power Mode Enabled 0, "}}) {
        saves(power);
        EXPECT_EQ(titles(), expected);
    }
    EXPECT_EQ(last.powerObservation->percentage, 30);
    // A change of the battery reads the mode as well.
    machine.isSavingPower = false;
    show(false, 29);
    EXPECT_EQ(titles(), "Low Power Mode Disabled 0, ");
    saves(true);
    titles();
    turn(false);
    machine.isSavingPower = false;
    turn(true);
    EXPECT_EQ(titles(), "") << "a pause is a new starting point";
}

TEST_F(BatteryActivityMonitorTest, ReportsItsStatus) {
    start(monitor);
    EXPECT_EQ(*monitor.status, "Not observing yet");
    machine.absence = "There is none.";
    showState(State::unavailable);
    EXPECT_EQ(*monitor.status, "Battery observation unavailable");
    EXPECT_EQ(monitor.absence(), "There is none.");
    // The mode is observed without a battery as well.
    saves(false);
    EXPECT_EQ(monitor.absence(), std::nullopt);
    saves(true);
    EXPECT_EQ(titles(), "Low Power Mode Enabled 0, ");
    showState(State::following);
    EXPECT_EQ(*monitor.status, "Observing power mode · no readable internal battery");
    show(true, 50);
    EXPECT_EQ(*monitor.status, "Observing power and battery changes");
}

TEST_F(BatteryActivityMonitorTest, WaitsForAReadingAfterAWake) {
    const auto percentage = [&] {
        const auto reading = test::await(monitor.reading());
        return reading ? *reading->percentage : -1;
    };
    EXPECT_EQ(percentage(), -1);
    start(monitor);
    show(true, 80);
    EXPECT_EQ(percentage(), 80);
    workspace.post(notification::willSleep);
    machine.state = State::unknown;
    machine.battery.reset();
    auto reading = monitor.reading();
    workspace.post(notification::didWake);
    show(true, 60);
    EXPECT_EQ(test::await(std::move(reading))->percentage, 60);

    // `reading` does not wait for ever, nor without a service, nor while the setting is off.
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
