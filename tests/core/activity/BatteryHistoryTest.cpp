#include "core/activity/BatteryHistory.h"

#include "core/base/Text.h"

#include <charconv>
#include <sstream>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

BatteryObservation battery(std::int64_t percentage, bool externalPower = false) {
    return {externalPower, percentage, false, false};
}

/// Parses a reading: "+" on external power, the percentage or "?", then "c" when charging, "f" when
/// full, "u" when neither is known. "x" is a missing reading.
std::optional<BatteryObservation> readingOf(std::string_view text) {
    if (text == "x")
        return std::nullopt;
    BatteryObservation reading = battery(0, text.starts_with('+'));
    text.remove_prefix(reading.externalPower ? 1 : 0);
    std::from_chars(text.data(), text.data() + text.size(), *reading.percentage);
    if (text.starts_with('?'))
        reading.percentage.reset();
    if (text.ends_with('u'))
        reading.charging = reading.fullyCharged = std::nullopt;
    else
        reading.charging = text.ends_with('c'), reading.fullyCharged = text.ends_with('f');
    return reading;
}

std::string whole(Date date) {
    return std::to_string(static_cast<int>(date.secondsSince2001));
}

/// The records made from readings at 0, 10, 20 … seconds, as "Title@time[session]". A reading with
/// the prefix "~" is replaced before it settles; one with the prefix "<" arrives after the clock
/// was set back, at second 5.
std::string recordsOf(const char* readings) {
    BatteryHistory history;
    std::string story;
    std::istringstream words(readings);
    double time = 0;
    for (std::string word; words >> word; time += 10) {
        const bool brief = word.starts_with('~');
        const double at = word.starts_with('<') ? 5 : time;
        if (!history.receive(readingOf(word.substr(word.find_first_not_of("~<"))), Date{at})
            || brief)
            continue;
        for (const auto& record : history.settle(Date{at + BatteryHistory::delay})) {
            story += " " + record.title() + "@" + whole(record.timestamp);
            if (const auto& session = record.batteryActivity.value()->session)
                story += "[" + whole(session->startedAt) + "-" + whole(session->endedAt) + "]";
        }
    }
    return std::string(trimmed(story));
}

struct Case {
    const char* what;
    const char* readings;
    const char* story;
};

void expectStories(std::initializer_list<Case> cases) {
    for (const auto& [what, readings, story] : cases)
        EXPECT_EQ(recordsOf(readings), story) << what;
}

} // namespace

TEST(BatteryHistory, ReportsALowBatteryOnceUntilItRecovered) {
    const auto once = "Battery Low@10 Power Connected@20 Switched to Battery@30";
    const auto again = "Battery Low@10 Power Connected@20 Switched to Battery@30 Battery Low@40";
    expectStories({
        {"20 is not low", "21 20", ""},
        {"19 is low, once", "20 19 18", "Battery Low@10"},
        {"a low level that does not last", "21 ~19 21 20", ""},
        {"low at the start makes no record", "15 14", ""},
        {"an unknown level is not below 20", "? 30 19", "Battery Low@20"},
        {"an unknown level is not above 20", "21 ? 19", ""},
        {"on power nothing is low", "+21 +19", ""},
        {"24 on power is no recovery", "21 19 +24 22 19", once},
        {"an unknown level is no recovery", "21 19 +? 22 19", once},
        {"25 on power is a recovery", "21 19 +25 22 19", again},
        {"on battery nothing recovers", "21 19 40 19", "Battery Low@10"},
        {"recovery after a low start", "15 +25 25 19",
         "Power Connected@10 Switched to Battery@20 Battery Low@30"},
    });
}

TEST(BatteryHistory, ReportsAFullBatteryOnceUntilItWasUsed) {
    const auto once = "Battery Fully Charged@10";
    expectStories({
        {"full after an unknown state makes no record", "+99u +100f", ""},
        {"95 does not count as used", "+99 +100f +95 +100f", once},
        {"94 counts as used", "+99 +100f +94 +100f",
         "Battery Fully Charged@10 Battery Fully Charged@30"},
        {"an unknown level does not count as used", "+99 +100f +? +100f", once},
        {"full at the start makes no record", "+100f +96 +100f", ""},
        {"full on battery makes no record", "99 100f", ""},
    });
}

TEST(BatteryHistory, ReportsHowLongItCharged) {
    const auto noSession = "Power Connected@10 Switched to Battery@30";
    expectStories({
        {"a charge lasts until it is unplugged", "50 +50c +51c 51",
         "Power Connected@10 Switched to Battery@30[10-30]"},
        {"a charge lasts until the battery is full", "50 +50c +100f 99",
         "Power Connected@10 Battery Fully Charged@20[10-20] Switched to Battery@30"},
        {"a charge may begin later than power", "50 +50 +50c 70",
         "Power Connected@10 Switched to Battery@30[20-30]"},
        {"all records of one change have the same charge", "50 +50c 19",
         "Power Connected@10 Switched to Battery@20[10-20] Battery Low@20[10-20]"},
        {"no charge when it charged at the start", "+50c +51c 50", "Switched to Battery@20"},
        {"no charge when it was not known whether it charged", "+50u +50c 50",
         "Switched to Battery@20"},
        {"no charge when it paused meanwhile", "50 +50c +60 60", noSession},
        {"no charge when the clock was set back", "50 +50c <60",
         "Power Connected@10 Switched to Battery@5"},
        {"a moment of power is not a charge", "50 ~+50c 50 49", ""},
    });
}

TEST(BatteryHistory, StartsAgainAfterAMissingReading) {
    expectStories({
        {"a pending change is dropped", "20 ~19 x 19", ""},
        {"the start of a charge is dropped", "50 +50c x +60c 60",
         "Power Connected@10 Switched to Battery@40"},
    });
    BatteryHistory history;
    EXPECT_FALSE(history.receive(std::nullopt, Date{0}));
    EXPECT_TRUE(history.receive(battery(50), Date{0}));
    EXPECT_FALSE(history.receive(battery(50), Date{1})) << "a repetition does not restart the wait";
    EXPECT_TRUE(history.receive(std::nullopt, Date{2}));
    EXPECT_FALSE(history.receive(std::nullopt, Date{3}));
}

TEST(BatteryHistory, RecordsBothReadings) {
    BatteryHistory history;
    history.receive(battery(50), Date{0});
    history.receive(battery(51, true), Date{10});
    EXPECT_TRUE(history.settle(Date{11.9}).empty());
    const auto records = history.settle(Date{30});
    ASSERT_EQ(records.size(), 1U);
    auto expected = SystemActivity::observed(SystemActivity::Kind::batteryChanged, Date{10});
    expected.id = records[0].id;
    expected.batteryActivity.emplace(
        {BatteryActivity::Kind::powerConnected, battery(50), std::nullopt, battery(51, true)});
    EXPECT_EQ(records[0], expected);
}
