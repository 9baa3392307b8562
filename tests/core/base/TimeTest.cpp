#include "core/base/Calendar.h"
#include "core/base/Iso8601.h"
#include "tests/support/ProcessZone.h"
#include "tests/support/TemporaryFolder.h"

#include <cmath>
#include <filesystem>

#include <gtest/gtest.h>
#include <unicode/locid.h>

using namespace tidemark;

namespace {

Date utc(const char* text) {
    const auto date = iso8601Date(text);
    EXPECT_TRUE(date) << text;
    return date.value_or(Date{});
}

} // namespace

TEST(Iso8601, ReadsFullInstants) {
    const std::pair<const char*, double> cases[] = {
        {"2001-01-01T00:00:00Z", 0},         {"2001-01-01T00:00:00.25Z", 0.25},
        {"2001-01-01T02:30:00+02:00", 1800}, {"2000-12-31T22:00:00-0200", 0},
        {"2000-12-31T23:59:60Z", 0},         {"1969-12-31T23:59:59Z", -978307201},
        {"2024-02-29T12:00:00Z", 730900800},
    };
    for (const auto& [text, seconds] : cases)
        EXPECT_EQ(iso8601Date(text), Date{seconds}) << text;
    EXPECT_NEAR(utc("2001-01-01T00:00:00.1234567890123456789Z").secondsSince2001, 0.123456789,
                1e-6);
    for (const char* wrong :
         {"", "2024-13-45", "2024-13-01T00:00:00Z", "2023-02-29T00:00:00Z", "2024-01-01",
          "2024-01-01T00:00:00", "2024-01-01 00:00:00Z", "2024-01-01T24:00:00Z",
          "2024-01-01T00:60:00Z", "2024-01-01T00:00:61Z", "2024-01-01T00:00:00.Z",
          "2024-01-01T00:00:00Zjunk", " 2024-01-01T00:00:00Z", "2024-01-01T00:00:00+2",
          "2024-01-01T00:00:00+99:00", "2024-01-01T00:00:00+01:99", "+024-01-01T00:00:00Z"})
        EXPECT_FALSE(iso8601Date(wrong)) << wrong;
}

TEST(Calendar, FindsTheStartOfADay) {
    const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
        {"UTC", "2024-05-01T00:00:00Z", "2024-05-01T00:00:00Z", "2024-05-02T00:00:00Z"},
        {"UTC", "2024-05-01T23:59:59.9999Z", "2024-05-01T00:00:00Z", "2024-05-02T00:00:00Z"},
        {"Europe/Berlin", "2024-03-31T12:00:00Z", "2024-03-30T23:00:00Z", "2024-03-31T22:00:00Z"},
        {"Europe/Berlin", "2024-10-27T12:00:00Z", "2024-10-26T22:00:00Z", "2024-10-27T23:00:00Z"},
        // The clock was put forward from 23:59:59 to 01:00.
        {"America/Sao_Paulo", "2018-11-04T15:00:00Z", "2018-11-04T03:00:00Z",
         "2018-11-05T02:00:00Z"},
        {"America/Sao_Paulo", "2018-11-04T02:59:59Z", "2018-11-03T03:00:00Z",
         "2018-11-04T03:00:00Z"},
        // Midnight occurred twice.
        {"America/Havana", "2018-11-04T05:30:00Z", "2018-11-04T04:00:00Z", "2018-11-05T05:00:00Z"},
        // A whole day was skipped.
        {"Pacific/Apia", "2011-12-29T22:00:00Z", "2011-12-29T10:00:00Z", "2011-12-30T10:00:00Z"},
        {"Nowhere/Atlantis", "2024-05-01T12:00:00Z", "2024-05-01T00:00:00Z",
         "2024-05-02T00:00:00Z"},
    };
    for (const auto& [zone, moment, start, next] : cases) {
        const Calendar calendar(zone);
        // The copy is tested. NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
        const Calendar copy = calendar;
        EXPECT_EQ(calendar.startOfDay(utc(moment)), utc(start)) << zone << moment;
        EXPECT_EQ(copy.startOfNextDay(utc(moment)), utc(next)) << zone << moment;
    }
    EXPECT_EQ(Calendar("Asia/Kathmandu").format(utc("2024-05-01T12:00:00Z"), "HH:mm"), "17:45");
}

TEST(Calendar, UsesTheZoneOfTheProcess) {
    const test::TemporaryFolder folder;
    const auto file = folder / "a zone";
    std::filesystem::copy_file("/usr/share/zoneinfo/Asia/Kathmandu", file);
    const std::tuple<std::string, const char*, const char*> cases[] = {
        {"UTC", "1 May 2024, 22:30", "2024-05-01T00:00:00Z"},
        {"Europe/Berlin", "2 May 2024, 00:30", "2024-05-01T22:00:00Z"},
        {"CET-1CEST,M3.5.0,M10.5.0/3", "2 May 2024, 00:30", "2024-05-01T22:00:00Z"},
        {":" + file.native(), "2 May 2024, 04:15", "2024-05-01T18:15:00Z"},
        {"<-0330>3:30", "1 May 2024, 19:00", "2024-05-01T03:30:00Z"},
        {"", "1 May 2024, 22:30", "2024-05-01T00:00:00Z"},
    };
    for (const auto& [zone, clock, start] : cases) {
        const test::ProcessZone set(zone);
        const Calendar calendar;
        // The copy is tested. NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
        const Calendar copy = calendar;
        EXPECT_EQ(copy.format(utc("2024-05-01T22:30:00Z"), "d MMM yyyy, HH:mm"), clock) << zone;
        EXPECT_EQ(calendar.startOfDay(utc("2024-05-01T22:30:00Z")), utc(start)) << zone;
    }
}

TEST(Calendar, FindsTheMomentOfAClockTime) {
    using namespace std::chrono;
    const test::ProcessZone set("CET-1CEST,M3.5.0,M10.5.0/3");
    const std::pair<local_days, const char*> halfPastTwo[] = {
        {local_days(2024y / May / 1), "2024-05-01T00:30:00Z"},
        {local_days(2024y / January / 1), "2024-01-01T01:30:00Z"},
        // 02:30 was skipped on the first of these days, and occurred twice on the second.
        {local_days(2024y / March / 31), "2024-03-31T01:00:00Z"},
        {local_days(2024y / October / 27), "2024-10-27T00:30:00Z"},
    };
    for (const auto& calendar : {Calendar(), Calendar("Europe/Berlin")})
        for (const auto& [day, moment] : halfPastTwo)
            EXPECT_EQ(calendar.momentOf(day + 2h + 30min), utc(moment)) << moment;
}

TEST(Calendar, AcceptsAnyDate) {
    const test::ProcessZone set("CET-1CEST,M3.5.0,M10.5.0/3");
    for (const auto& calendar : {Calendar(), Calendar("Europe/Berlin")})
        for (const double seconds : {1e300, -1e300, HUGE_VAL, -HUGE_VAL, std::nan(""), 1e13}) {
            EXPECT_FALSE(calendar.format(Date{seconds}, "d MMM yyyy, HH:mm:ss").empty());
            EXPECT_LE(calendar.startOfDay(Date{seconds}), calendar.startOfNextDay(Date{seconds}));
        }
}

TEST(Calendar, FormatsInTheOrderOfTheLanguage) {
    const icu::Locale before;
    const struct {
        const char* language;
        const char* day;
        const char* moment;
    } cases[] = {{"en_US", "Monday, 1 January 2001", "1 Jan 2001, 00:00"},
                 {"de_DE", "Montag, 1. Januar 2001", "1. Jan. 2001, 00:00"}};
    for (const auto& [language, day, moment] : cases) {
        UErrorCode status = U_ZERO_ERROR;
        icu::Locale::setDefault(icu::Locale(language), status);
        const Calendar calendar("UTC");
        EXPECT_EQ(calendar.format(Date{0}, "EEEE, d MMMM yyyy"), day);
        EXPECT_EQ(calendar.format(Date{0}, "d MMM yyyy, HH:mm"), moment);
    }
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale::setDefault(before, status);
}
