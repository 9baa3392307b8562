#include "core/activity/PowerSource.h"

#include <limits>

#include <gtest/gtest.h>

using namespace tidemark;
using PropertyList::Dictionary;
using PropertyList::Value;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

Value text(const char* value) {
    return {std::string(value)};
}

Value number(std::int64_t value) {
    return {value};
}

/// A battery at 80 of 100 on external power, with these keys changed.
Dictionary source(Dictionary changed = {}) {
    Dictionary description{
        {"Type", text("InternalBattery")},
        {"Is Present", {true}},
        {"Power Source State", text("AC Power")},
        {"Current Capacity", number(80)},
        {"Max Capacity", number(100)},
        {"Is Charged", {false}},
        {"Is Charging", {true}},
    };
    changed.merge(description);
    return changed;
}

} // namespace

TEST(PowerSource, ReadsAPresentInternalBattery) {
    EXPECT_EQ(PowerSource::parse(source()), (BatteryObservation{true, 80, true, false}));
    EXPECT_EQ(PowerSource::parse(source({{"Power Source State", text("Battery Power")}})),
              (BatteryObservation{false, 80, true, false}));
    const Dictionary unreadable[] = {
        source({{"Type", text("UPS")}}),
        source({{"Type", number(1)}}),
        source({{"Is Present", {false}}}),
        source({{"Is Present", number(1)}}),
        source({{"Power Source State", text("Off Line")}}),
        {},
    };
    for (const auto& description : unreadable)
        EXPECT_EQ(PowerSource::parse(description), std::nullopt);
    EXPECT_EQ(
        PowerSource::firstBattery({unreadable[0], source({{"Is Charging", {false}}}), source()}),
        (BatteryObservation{true, 80, false, false}));
    EXPECT_EQ(PowerSource::firstBattery({}), std::nullopt);
}

TEST(PowerSource, HasAWholePercentageOrNone) {
    struct Case {
        Value current;
        Value maximum;
        std::optional<std::int64_t> percentage;
    };
    const Case cases[] = {
        {number(0), number(100), 0},
        {number(29), number(100), 29},
        {number(57), number(100), 57},
        {number(4999), number(5000), 99},
        {{2.5}, number(5), 50},
        {number(5000), number(5000), 100},
        {number(5001), number(5000), std::nullopt},
        {number(-1), number(100), std::nullopt},
        {number(0), number(0), std::nullopt},
        {{notANumber}, number(100), std::nullopt},
        {number(1), {infinity}, std::nullopt},
        {text("80"), number(100), std::nullopt},
        {number(1), {true}, std::nullopt},
    };
    for (const auto& [current, maximum, percentage] : cases) {
        const auto battery =
            PowerSource::parse(source({{"Current Capacity", current}, {"Max Capacity", maximum}}));
        ASSERT_TRUE(battery);
        EXPECT_EQ(battery->percentage, percentage) << "case " << (&current - &cases[0].current);
    }
}

TEST(PowerSource, CombinesTheBatteriesOfUPower) {
    using Device = PowerSource::UPowerDevice;
    const auto battery = [](std::optional<double> level, std::optional<std::uint32_t> state) {
        return Device{2, true, true, level, state, {}, {}};
    };
    const auto sized = [](double energy, double full, std::uint32_t state) {
        return Device{2, true, true, energy * 100 / full, state, energy, full};
    };
    const Device mouse{2, false, true, 3, 2, {}, {}};
    const Device emptyBay{2, true, false, 0, 0, {}, {}};
    const Device line{1, true, {}, {}, {}, {}, {}};
    struct Case {
        const char* what;
        std::vector<Device> devices;
        std::optional<bool> onBattery;
        std::optional<BatteryObservation> reading;
    };
    const Case cases[] = {
        {"charging", {line, battery(80.9, 1)}, false, {{true, 80, true, false}}},
        {"discharging", {battery(80, 2), mouse}, true, {{false, 80, false, false}}},
        {"weak charger", {battery(80, 2)}, false, {{true, 80, false, false}}},
        {"waits to charge", {battery(80, 5)}, false, {{true, 80, false, false}}},
        {"worn and full", {sized(58.5, 60, 4)}, false, {{true, 97, false, true}}},
        {"unknown state", {battery(80, 0)}, false, {{true, 80, {}, {}}}},
        {"no state", {battery(80, {})}, false, {{true, 80, {}, {}}}},
        {"no level", {battery(notANumber, 1)}, false, {{true, {}, true, false}}},
        {"beyond full", {battery(101, 1)}, false, {{true, {}, true, false}}},
        {"by their sizes", {sized(10, 20, 2), sized(60, 60, 4)}, true, {{false, 87, false, false}}},
        {"no energies", {battery(50, 1), battery(71, 5)}, false, {{true, 60, true, false}}},
        {"one fills", {sized(30, 60, 1), battery(9, 0)}, false, {{true, 29, true, {}}}},
        {"both full", {sized(60, 60, 4), sized(20.1, 20, 4)}, false, {{true, 100, false, true}}},
        {"none but others", {line, mouse, emptyBay}, false, {}},
        {"power not known", {battery(80, 1)}, {}, {}},
    };
    for (const auto& [what, devices, onBattery, reading] : cases)
        EXPECT_EQ(PowerSource::combined(devices, onBattery), reading) << what;
}
