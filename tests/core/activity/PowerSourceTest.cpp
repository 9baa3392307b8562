#include "core/activity/PowerSource.h"

#include <functional>
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

TEST(PowerSource, IsAPresentInternalBatteryOfAKnownState) {
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

TEST(PowerSource, IsFullOnlyWhenChargedAndAtAHundred) {
    const auto fullOf = [](Dictionary changed) {
        return PowerSource::parse(source(std::move(changed))).value().fullyCharged;
    };
    EXPECT_EQ(fullOf({{"Is Charged", {true}}, {"Current Capacity", number(100)}}), true);
    EXPECT_EQ(fullOf({{"Is Charged", {true}}, {"Current Capacity", number(99)}}), false);
    EXPECT_EQ(fullOf({{"Current Capacity", number(100)}}), false);
    EXPECT_EQ(fullOf({{"Is Charged", text("yes")}}), std::nullopt);
    EXPECT_EQ(fullOf({{"Is Charged", {true}}, {"Max Capacity", text("")}}), std::nullopt);
}

TEST(PowerSource, ReadsTheSameFromUPower) {
    const PowerSource::UPowerDevice whole{2, true, true, 80.9, 1, false};
    struct Case {
        const char* what;
        std::function<void(PowerSource::UPowerDevice&)> change;
        std::optional<BatteryObservation> battery;
    };
    using Device = PowerSource::UPowerDevice;
    const Case cases[] = {
        {"charging", [](Device&) {}, {{true, 80, true, false}}},
        {"discharging",
         [](Device& d) { d.state = 2, d.onBattery = true; },
         {{false, 80, false, false}}},
        {"waits to charge", [](Device& d) { d.state = 5; }, {{true, 80, false, false}}},
        {"full", [](Device& d) { d.state = 4, d.percentage = 100; }, {{true, 100, false, true}}},
        {"held below full", [](Device& d) { d.state = 4; }, {{true, 80, false, false}}},
        {"unknown state", [](Device& d) { d.state = 0; }, {{true, 80, {}, {}}}},
        {"no state", [](Device& d) { d.state.reset(); }, {{true, 80, {}, {}}}},
        {"no level", [](Device& d) { d.percentage = notANumber; }, {{true, {}, true, {}}}},
        {"beyond full", [](Device& d) { d.percentage = 101; }, {{true, {}, true, {}}}},
        {"line power", [](Device& d) { d.type = 1; }, {}},
        {"a mouse", [](Device& d) { d.powerSupply = false; }, {}},
        {"an empty bay", [](Device& d) { d.isPresent = false; }, {}},
        {"power not known", [](Device& d) { d.onBattery.reset(); }, {}},
    };
    for (const auto& [what, change, battery] : cases) {
        Device device = whole;
        change(device);
        EXPECT_EQ(PowerSource::parse(device), battery) << what;
    }
}
