#include "core/activity/BatteryHistory.h"

#include "core/base/Text.h"

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

constexpr std::optional<std::int64_t> unknown;
constexpr bool charging = true;
constexpr bool full = true;

BatteryObservation battery(std::optional<std::int64_t> percentage) {
    return {false, percentage, false, false};
}

BatteryObservation power(std::optional<std::int64_t> percentage,
                         std::optional<bool> isCharging = false,
                         std::optional<bool> isFull = false) {
    return {true, percentage, isCharging, isFull};
}

struct Reading {
    double at;
    std::optional<BatteryObservation> observation;
    /// Replaced by the next before it settled.
    bool brief = false;
};

std::string whole(Date date) {
    return std::to_string(static_cast<int>(date.secondsSince2001));
}

/// What these readings make, as "Title@time", with the times of its session behind it.
std::string storyOf(const std::vector<Reading>& readings) {
    BatteryHistory history;
    std::string story;
    for (const auto& [at, observation, brief] : readings) {
        if (!history.receive(observation, Date{at}) || brief)
            continue;
        for (const auto& record : history.settle(Date{at + BatteryHistory::delay})) {
            const BatteryActivity& activity = record.batteryActivity.value();
            story += record.title() + "@" + whole(record.timestamp);
            if (const auto& session = activity.session)
                story += "[" + whole(session->startedAt) + "-" + whole(session->endedAt) + "]";
            story += " ";
        }
    }
    return std::string(trimmed(story));
}

struct Case {
    const char* what;
    std::vector<Reading> readings;
    const char* story;
};

void expectStories(const std::vector<Case>& cases) {
    for (const auto& [what, readings, story] : cases)
        EXPECT_EQ(storyOf(readings), story) << what;
}

} // namespace

TEST(BatteryHistory, TellsOfALowBatteryOnceUntilItRecovered) {
    const Reading start{0, battery(21)};
    const Reading low{10, battery(19)};
    const char* once = "Battery Low@10 Power Connected@20 Switched to Battery@30";
    expectStories({
        {"20 is not low", {start, {10, battery(20)}}, ""},
        {"19 is", {{0, battery(20)}, low, {20, battery(18)}}, "Battery Low@10"},
        {"it must last",
         {start, {10, battery(19), true}, {11, battery(21)}, {20, battery(20)}},
         ""},
        {"low at the start is no news", {{0, battery(15)}, {10, battery(14)}}, ""},
        {"20 at the start is not low yet", {{0, battery(20)}, {10, battery(5)}}, "Battery Low@10"},
        {"an unknown level is not below 20",
         {{0, battery(unknown)}, {9, battery(30)}, low},
         "Battery Low@10"},
        {"nor was it above", {start, {9, battery(unknown)}, low}, ""},
        {"on power nothing is low", {{0, power(21)}, {10, power(19)}}, ""},
        {"24 is no recovery",
         {start, low, {20, power(24)}, {30, battery(22)}, {40, battery(19)}},
         once},
        {"nor is an unknown level",
         {start, low, {20, power(unknown)}, {30, battery(22)}, {40, battery(19)}},
         once},
        {"25 is",
         {start, low, {20, power(25)}, {30, battery(22)}, {40, battery(19)}},
         "Battery Low@10 Power Connected@20 Switched to Battery@30 Battery Low@40"},
        {"on battery nothing recovers",
         {start, low, {20, battery(40)}, {30, battery(19)}},
         "Battery Low@10"},
        {"after a low start too",
         {{0, battery(15)}, {10, power(25)}, {20, battery(25)}, {30, battery(19)}},
         "Power Connected@10 Switched to Battery@20 Battery Low@30"},
    });
}

TEST(BatteryHistory, TellsOfAFullBatteryOnceUntilItWasUsed) {
    const Reading start{0, power(99)};
    const Reading filled{10, power(100, false, full)};
    const Reading again{30, power(100, false, full)};
    expectStories({
        {"full", {start, filled}, "Battery Fully Charged@10"},
        {"not after an unknown state", {{0, power(99, false, std::nullopt)}, filled}, ""},
        {"95 is not used", {start, filled, {20, power(95)}, again}, "Battery Fully Charged@10"},
        {"94 is",
         {start, filled, {20, power(94)}, again},
         "Battery Fully Charged@10 Battery Fully Charged@30"},
        {"an unknown level is not",
         {start, filled, {20, power(unknown)}, again},
         "Battery Fully Charged@10"},
        {"full at the start is no news",
         {{0, power(100, false, full)}, {20, power(96)}, again},
         ""},
        {"only on power", {{0, battery(99)}, {10, {{false, 100, false, full}}}}, ""},
    });
}

TEST(BatteryHistory, TellsHowLongItCharged) {
    const Reading unplugged{2410, battery(70)};
    const Reading start{0, battery(50)};
    const Reading plugged{10, power(50, charging)};
    expectStories({
        {"until unplugged",
         {start, plugged, {20, power(51, charging)}, unplugged},
         "Power Connected@10 Switched to Battery@2410[10-2410]"},
        {"until full",
         {start, plugged, {90, power(100, false, full)}, unplugged},
         "Power Connected@10 Battery Fully Charged@90[10-90] Switched to Battery@2410"},
        {"from when it began, which may be later than power",
         {start, {10, power(50)}, {60, power(50, charging)}, unplugged},
         "Power Connected@10 Switched to Battery@2410[60-2410]"},
        {"the same for all records of one change",
         {start, plugged, {90, battery(19)}},
         "Power Connected@10 Switched to Battery@90[10-90] Battery Low@90[10-90]"},
        {"not when it charged already", {plugged, unplugged}, "Switched to Battery@2410"},
        {"nor when that was not known",
         {{0, power(50, std::nullopt)}, plugged, unplugged},
         "Switched to Battery@2410"},
        {"nor when it paused meanwhile",
         {start, plugged, {90, power(60)}, unplugged},
         "Power Connected@10 Switched to Battery@2410"},
        {"nor when the clock was set back",
         {start, plugged, {5, battery(60)}},
         "Power Connected@10 Switched to Battery@5"},
        {"a moment of power is none",
         {start, {10, power(50, charging), true}, {11, battery(50)}, {20, battery(49)}},
         ""},
    });
}

TEST(BatteryHistory, StartsAnewAfterAMissingReading) {
    expectStories({
        {"what was pending is dropped",
         {{0, battery(20)}, {10, battery(19), true}, {11, std::nullopt}, {12, battery(19)}},
         ""},
        {"so is the charge",
         {{0, battery(50)},
          {10, power(50, charging)},
          {20, std::nullopt},
          {30, power(60, charging)},
          {40, battery(60)}},
         "Power Connected@10 Switched to Battery@40"},
    });
    BatteryHistory history;
    EXPECT_FALSE(history.receive(std::nullopt, Date{0}));
    EXPECT_TRUE(history.receive(battery(50), Date{0}));
    EXPECT_FALSE(history.receive(battery(50), Date{1})) << "a repetition leaves the wait alone";
    EXPECT_TRUE(history.receive(std::nullopt, Date{2}));
    EXPECT_FALSE(history.receive(std::nullopt, Date{3}));
}

TEST(BatteryHistory, KeepsBothReadings) {
    BatteryHistory history;
    history.receive(battery(50), Date{0});
    history.receive(power(51), Date{10});
    EXPECT_TRUE(history.settle(Date{11.9}).empty());
    const auto records = history.settle(Date{30});
    ASSERT_EQ(records.size(), 1U);
    auto expected = SystemActivity::observed(SystemActivity::Kind::batteryChanged, Date{10});
    expected.id = records[0].id;
    expected.batteryActivity = BatteryActivity{BatteryActivity::Kind::powerConnected, battery(50),
                                               std::nullopt, power(51)};
    EXPECT_EQ(records[0], expected);
}
