#include "core/capture/TimeSpan.h"

#include "core/base/Text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace tidemark::TimeSpan {

namespace {

struct Unit {
    std::string_view name;
    double seconds;
};

constexpr double minute = 60;
constexpr double hour = 3'600;
constexpr double day = 86'400;
constexpr double week = 7 * day;
constexpr double year = 365.25 * day;
constexpr double month = year / 12;

constexpr auto units = std::to_array<Unit>({
    {"", 1},          {"s", 1},          {"sec", 1},         {"second", 1},       {"seconds", 1},
    {"m", minute},    {"min", minute},   {"minute", minute}, {"minutes", minute}, {"h", hour},
    {"hr", hour},     {"hour", hour},    {"hours", hour},    {"d", day},          {"day", day},
    {"days", day},    {"w", week},       {"week", week},     {"weeks", week},     {"M", month},
    {"month", month}, {"months", month}, {"y", year},        {"year", year},      {"years", year},
    {"ms", 1e-3},     {"msec", 1e-3},    {"us", 1e-6},       {"usec", 1e-6},      {"µs", 1e-6},
    {"μs", 1e-6},     {"ns", 1e-9},      {"nsec", 1e-9},
});

std::optional<double> secondsOf(std::string_view name) {
    for (const auto& unit : units)
        if (unit.name == name)
            return unit.seconds;
    return std::nullopt;
}

std::string_view nextName(std::string_view text) {
    constexpr std::string_view ends = " \t0123456789.";
    return text.substr(0, text.find_first_of(ends));
}

} // namespace

std::optional<double> seconds(std::string_view text) {
    text = trimmed(text);
    if (text.empty())
        return std::nullopt;
    double total = 0;
    while (!text.empty()) {
        double number = 0;
        const auto read = std::from_chars(text.data(), text.data() + text.size(), number,
                                          std::chars_format::fixed);
        if (read.ec != std::errc() || number < 0)
            return std::nullopt;
        text = trimmed(text.substr(static_cast<std::size_t>(read.ptr - text.data())));
        const std::string_view name = nextName(text);
        const auto unit = secondsOf(name);
        if (!unit)
            return std::nullopt;
        total += number * *unit;
        text = trimmed(text.substr(name.size()));
    }
    return std::isfinite(total) ? std::optional(total) : std::nullopt;
}

} // namespace tidemark::TimeSpan
