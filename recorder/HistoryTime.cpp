#include "recorder/HistoryTime.h"

#include "app/preferences/PreferenceKeys.h"
#include "recorder/CommandOption.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <ctime>

namespace tidemark::historyTime {

namespace {

constexpr double hour = 3600;
constexpr double day = 86'400;

std::optional<double> secondsOf(char unit) {
    switch (unit) {
    case 'h':
        return hour;
    case 'd':
        return day;
    case 'w':
        return 7 * day;
    default:
        return std::nullopt;
    }
}

/// "2026-05-31" as local midnight.
std::optional<Date> localMidnight(const std::string& text) {
    using namespace std::chrono;
    std::tm fields{};
    const char* end = ::strptime(text.c_str(), "%Y-%m-%d", &fields);
    if (!end || *end)
        return std::nullopt;
    const year_month_day date(year(fields.tm_year + 1900),
                              month(static_cast<unsigned>(fields.tm_mon + 1)),
                              std::chrono::day(static_cast<unsigned>(fields.tm_mday)));
    // Absent for the 31st of a shorter month.
    return date.ok() ? std::optional(Calendar().momentOf(local_days(date))) : std::nullopt;
}

} // namespace

Date since(const std::string& text, Date now) {
    if (text.empty())
        return Date::distantPast();
    double count = 0;
    const char* end = text.data() + text.size();
    const auto number = std::from_chars(text.data(), end, count);
    if (number.ec == std::errc() && number.ptr + 1 == end && count >= 0)
        if (const auto unit = secondsOf(*number.ptr); unit && std::isfinite(count * *unit))
            return now + -count * *unit;
    if (const auto date = localMidnight(text))
        return *date;
    throw UsageError("\"" + text + "\" is no time: say 12h, 7d, 3w or a date such as 2026-05-31");
}

void checkSince(const std::string& text) {
    since(text, Date{});
}

void checkSince(const std::optional<std::string>& text) {
    if (text)
        checkSince(*text);
}

std::optional<std::int64_t> days(const std::string& text) {
    std::int64_t count = 0;
    const char* end = text.data() + text.size();
    const auto number = std::from_chars(text.data(), end, count);
    const auto& allowed = preferenceKeys::historyCustomWindowDays;
    if (number.ec != std::errc() || number.ptr + 1 != end || *number.ptr != 'd'
        || count < allowed.least || count > allowed.most)
        return std::nullopt;
    return count;
}

std::string moment(std::optional<Date> date, const char* absent, const Calendar& calendar) {
    return date ? calendar.format(*date, "d MMM yyyy, HH:mm:ss") : absent;
}

} // namespace tidemark::historyTime
