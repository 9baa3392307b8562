#include "core/presentation/HistoryTimeWindow.h"

#include <algorithm>

namespace tidemark {

namespace {

constexpr double secondsOfDay = 86'400;
constexpr std::int64_t leastCustomDays = 1;
constexpr std::int64_t mostCustomDays = 365;

struct Fixed {
    HistoryTimeWindow window;
    std::string_view label;
    double days;
};

constexpr auto fixedWindows = std::to_array<Fixed>({
    {HistoryTimeWindow::day, "24 hours", 1},
    {HistoryTimeWindow::threeDays, "3 days", 3},
    {HistoryTimeWindow::week, "7 days", 7},
    {HistoryTimeWindow::month, "30 days", 30},
});

} // namespace

std::string label(HistoryTimeWindow window, std::int64_t customDays) {
    for (const Fixed& fixed : fixedWindows)
        if (fixed.window == window)
            return std::string(fixed.label);
    return window == HistoryTimeWindow::custom ? "Custom: " + std::to_string(customDays) + " days"
                                               : "All history";
}

Date cutoff(HistoryTimeWindow window, Date at, std::int64_t customDays) {
    for (const Fixed& fixed : fixedWindows)
        if (fixed.window == window)
            return at + -fixed.days * secondsOfDay;
    if (window == HistoryTimeWindow::all)
        return Date::distantPast();
    const auto days = std::clamp(customDays, leastCustomDays, mostCustomDays);
    return at + -static_cast<double>(days) * secondsOfDay;
}

} // namespace tidemark
