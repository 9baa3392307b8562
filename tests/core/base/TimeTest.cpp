#include "core/base/Calendar.h"
#include "core/base/Iso8601.h"

#include <gtest/gtest.h>

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

TEST(Calendar, KnowsWhenDaysBegin) {
    const struct {
        const char* zone;
        const char* moment;
        const char* start;
        const char* next;
    } cases[] = {
        {"UTC", "2024-05-01T00:00:00Z", "2024-05-01T00:00:00Z", "2024-05-02T00:00:00Z"},
        {"UTC", "2024-05-01T23:59:59.9999Z", "2024-05-01T00:00:00Z", "2024-05-02T00:00:00Z"},
        {"Europe/Berlin", "2024-03-31T12:00:00Z", "2024-03-30T23:00:00Z", "2024-03-31T22:00:00Z"},
        {"Europe/Berlin", "2024-10-27T12:00:00Z", "2024-10-26T22:00:00Z", "2024-10-27T23:00:00Z"},
        // The clock went from 23:59:59 to 01:00.
        {"America/Sao_Paulo", "2018-11-04T15:00:00Z", "2018-11-04T03:00:00Z",
         "2018-11-05T02:00:00Z"},
        {"America/Sao_Paulo", "2018-11-04T02:59:59Z", "2018-11-03T03:00:00Z",
         "2018-11-04T03:00:00Z"},
        // Midnight came twice.
        {"America/Havana", "2018-11-04T05:30:00Z", "2018-11-04T04:00:00Z", "2018-11-05T05:00:00Z"},
        // A whole day was left out.
        {"Pacific/Apia", "2011-12-29T22:00:00Z", "2011-12-29T10:00:00Z", "2011-12-30T10:00:00Z"},
        {"Nowhere/Atlantis", "2024-05-01T12:00:00Z", "2024-05-01T00:00:00Z",
         "2024-05-02T00:00:00Z"},
    };
    for (const auto& c : cases) {
        const Calendar calendar(c.zone);
        const Calendar copy = calendar;
        EXPECT_EQ(calendar.startOfDay(utc(c.moment)), utc(c.start)) << c.zone << c.moment;
        EXPECT_EQ(copy.startOfNextDay(utc(c.moment)), utc(c.next)) << c.zone << c.moment;
    }
    EXPECT_EQ(Calendar("Asia/Kathmandu").format(utc("2024-05-01T12:00:00Z"), "HH:mm"), "17:45");
}

TEST(Calendar, SurvivesAnyDate) {
    const Calendar calendar("Europe/Berlin");
    for (const Date date :
         {Date{1e300}, Date{-1e300}, Date::distantPast(), Date::distantFuture(), Date{1e13}}) {
        EXPECT_FALSE(calendar.format(date, "d MMM yyyy, HH:mm:ss").empty());
        EXPECT_LE(calendar.startOfDay(date), calendar.startOfNextDay(date));
    }
}
