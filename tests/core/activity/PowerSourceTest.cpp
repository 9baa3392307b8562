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

TEST(PowerSource, ReadsTheSameFromUPower) {
    struct Case {
        const char* what;
        PowerSource::UPowerDevice device;
        std::optional<BatteryObservation> battery;
    };
    const Case cases[] = {
        {"charging", {2, true, true, 80.9, 1, false}, {{true, 80, true, false}}},
        {"discharging", {2, true, true, 80, 2, true}, {{false, 80, false, false}}},
        {"waits to charge", {2, true, true, 80, 5, false}, {{true, 80, false, false}}},
        {"full", {2, true, true, 100, 4, false}, {{true, 100, false, true}}},
        {"held below full", {2, true, true, 80, 4, false}, {{true, 80, false, false}}},
        {"unknown state", {2, true, true, 80, 0, false}, {{true, 80, {}, {}}}},
        {"no state", {2, true, true, 80, {}, false}, {{true, 80, {}, {}}}},
        {"no level", {2, true, true, notANumber, 1, false}, {{true, {}, true, {}}}},
        {"beyond full", {2, true, true, 101, 1, false}, {{true, {}, true, {}}}},
        {"line power", {1, true, true, 80, 1, false}, {}},
        {"a mouse", {2, false, true, 80, 1, false}, {}},
        {"an empty bay", {2, true, false, 80, 1, false}, {}},
        {"power not known", {2, true, true, 80, 1, {}}, {}},
    };
    for (const auto& [what, device, battery] : cases)
        EXPECT_EQ(PowerSource::parse(device), battery) << what;
}
