#include "core/base/Iso8601.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace tidemark {

namespace {

/// Parses an ISO 8601 text from the front. After one step has failed, all further steps fail.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest(text) {}

    int number(std::size_t digits) {
        int value = 0;
        if (rest.size() < digits)
            return fail();
        for (const char digit : rest.substr(0, digits)) {
            if (digit < '0' || digit > '9')
                return fail();
            value = value * 10 + (digit - '0');
        }
        rest.remove_prefix(digits);
        return value;
    }
    bool take(char character) {
        if (!rest.starts_with(character))
            return false;
        rest.remove_prefix(1);
        return true;
    }
    void require(char character) {
        if (!take(character))
            fail();
    }
    /// The digits after the decimal point as a fraction of 1; digits beyond the fifteenth are
    /// ignored.
    double fraction() {
        double digits = 0;
        double scale = 1;
        const std::size_t before = rest.size();
        for (; !rest.empty() && rest.front() >= '0' && rest.front() <= '9'; rest.remove_prefix(1)) {
            if (scale >= 1e15)
                continue;
            digits = digits * 10 + (rest.front() - '0');
            scale *= 10;
        }
        return rest.size() == before ? fail() : digits / scale;
    }
    bool done() const { return ok && rest.empty(); }

private:
    int fail() {
        ok = false;
        return 0;
    }

    std::string_view rest;
    bool ok = true;
};

} // namespace

std::optional<Date> iso8601Date(std::string_view text) {
    using namespace std::chrono;
    Scanner scan(text);
    const int y = scan.number(4);
    scan.require('-');
    const int m = scan.number(2);
    scan.require('-');
    const int d = scan.number(2);
    scan.require('T');
    const int hour = scan.number(2);
    scan.require(':');
    const int minute = scan.number(2);
    scan.require(':');
    const int second = scan.number(2);
    const double fraction = scan.take('.') ? scan.fraction() : 0;
    int offset = 0;
    if (!scan.take('Z')) {
        const int sign = scan.take('-') ? -1 : 1;
        if (sign == 1)
            scan.require('+');
        const int hours = scan.number(2);
        scan.take(':');
        const int minutes = scan.number(2);
        if (hours > 23 || minutes > 59)
            return std::nullopt;
        offset = sign * (hours * 3600 + minutes * 60);
    }
    const year_month_day day(year(y), month(static_cast<unsigned>(m)),
                             std::chrono::day(static_cast<unsigned>(d)));
    if (!scan.done() || !day.ok() || hour > 23 || minute > 59 || second > 60)
        return std::nullopt;
    const auto days = sys_days(day).time_since_epoch();
    const double whole = static_cast<double>(duration_cast<seconds>(days).count()) + hour * 3600.0
                         + minute * 60.0 + second - offset;
    return Date::fromUnix(whole + fraction);
}

std::optional<std::string> iso8601Text(Date date) {
    using namespace std::chrono;
    constexpr sys_seconds first = sys_days(year(1) / January / 1);
    constexpr sys_seconds last = sys_days(year(10'000) / January / 1) - seconds(1);
    if (std::isnan(date.secondsSince2001))
        return std::nullopt;
    const double whole = std::clamp(std::floor(date.secondsSince1970()),
                                    static_cast<double>(first.time_since_epoch().count()),
                                    static_cast<double>(last.time_since_epoch().count()));
    const sys_seconds time{seconds(static_cast<std::int64_t>(whole))};
    const auto midnight = floor<days>(time);
    const year_month_day day(midnight);
    const hh_mm_ss clock(time - midnight);
    std::array<char, 32> text{};
    const int size = std::snprintf(
        text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(day.year()),
        static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
        static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
        static_cast<int>(clock.seconds().count()));
    return std::string(text.data(), static_cast<std::size_t>(size));
}

} // namespace tidemark
