#include "platform/linux/UPowerBattery.h"

#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/platform/PowerMachine.h"

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;
using State = BatterySource::State;

namespace {

const QString upower = u"org.freedesktop.UPower"_s;
const QString upowerPath = u"/org/freedesktop/UPower"_s;

/// What is known of the battery as text, such as "mains 80 charging".
std::string textOf(const BatterySource& source) {
    if (source.state() != State::following)
        return source.state() == State::unknown ? "unknown" : "unavailable";
    const auto battery = source.reading();
    if (!battery)
        return "none";
    std::string text = battery->externalPower ? "mains" : "battery";
    if (battery->percentage)
        text += " " + std::to_string(*battery->percentage);
    const auto add = [&](std::optional<bool> value, const char* word) {
        text += value ? (*value ? std::string(" ") + word : "") : std::string(" ") + word + "?";
    };
    add(battery->charging, "charging");
    add(battery->fullyCharged, "full");
    return text;
}

struct UPowerBatteryTest : testing::Test {
    test::PrivateBus home;
    QDBusConnection bus = home.connect(u"tested"_s);
    test::ManualAppClock clock;
    int changes = 0;
    std::unique_ptr<UPowerBattery> source;

    ~UPowerBatteryTest() override {
        source.reset();
        clock.advance(1000);
    }
    void follow() {
        source = std::make_unique<UPowerBattery>(bus, clock, [this] { ++changes; });
    }
    void expect(const std::string& text) {
        // Advances the clock, because a first reading counts only after some time.
        test::until([&] {
            if (clock.sleeping() > 0)
                clock.advance(UPowerBattery::provisional);
            return textOf(*source) == text;
        });
        EXPECT_EQ(textOf(*source), text);
    }
};

/// With the real service, on a machine whose power supplies are made up.
struct RealUPower : UPowerBatteryTest {
    void SetUp() override {
        if (const auto missing = test::PowerMachine::missing(); !missing.empty())
            GTEST_SKIP() << missing;
        machine.emplace(home);
        machine->carryOut("mains AC online=1");
    }
    std::optional<test::PowerMachine> machine;
};

constexpr const char* charging =
    "battery BAT0 status=Charging energy_full=60000000 energy_now=30000000";

} // namespace

TEST_F(RealUPower, ReadsWhatTheServiceReports) {
    machine->carryOut("start upowerd");
    follow();
    expect("none");
    const std::pair<std::string, const char*> steps[] = {
        {"mouse hidpp_battery_0 status=Discharging capacity=5 model_name=Mouse", "none"},
        {charging, "mains 50 charging"},
        {"battery BAT0 energy_now=36000000", "mains 60 charging"},
        // UPower reports the loss of external power only when the battery discharges.
        {"mains AC online=0", "mains 60 charging"},
        {"battery BAT0 status=Discharging", "battery 60"},
        {"mains AC online=1", "mains 60"},
        {"battery BAT0 status=Charging", "mains 60 charging"},
        {"battery BAT0 status=Full energy_now=58500000", "mains 97 full"},
        // The display device of UPower reports charging for these two.
        {"battery BAT1 status=Not_charging energy_full=20000000 energy_now=10000000", "mains 85"},
        {"remove BAT0", "mains 50"},
        {"remove BAT1", "none"},
    };
    for (const auto& [command, text] : steps) {
        machine->carryOut(command);
        expect(text);
    }
}

TEST_F(RealUPower, FollowsARestartAndAServiceThatHangs) {
    machine->carryOut(charging);
    follow();
    // Nothing is installed on this bus that could be started.
    expect("unavailable");
    EXPECT_EQ(source->absence(), "UPower, the service that reports batteries, does not run.");
    for (const char* level : {"30000000", "42000000"}) {
        machine->carryOut(std::string("battery BAT0 energy_now=") + level);
        machine->carryOut("start upowerd");
        expect(*level == '3' ? "mains 50 charging" : "mains 70 charging");
        // The stopped service answers late, and nothing else is delayed meanwhile.
        machine->carryOut("stop upowerd");
        machine->carryOut("battery BAT0 energy_now=54000000");
        test::settle();
        machine->carryOut("cont upowerd");
        expect("mains 90 charging");
        machine->carryOut("kill upowerd");
        expect("unavailable");
    }
}

TEST_F(UPowerBatteryTest, DoesNotTrustTheFirstReadings) {
    test::MockService mock{home, bus, u"upower"_s, upower};
    mock.start();
    mock.control(upowerPath, u"AddChargingBattery"_s,
                 {u"BAT0"_s, u"Battery"_s, 30.0, qint64{1200}});
    follow();
    test::until([&] { return clock.sleeping() > 0; });
    test::settle();
    clock.advance(UPowerBattery::provisional - 0.1);
    test::settle();
    EXPECT_EQ(textOf(*source), "unknown");
    expect("mains 30 charging");
}
