#include "core/growth/ChartScale.h"

#include "core/base/Text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

namespace tidemark::chartScale {

namespace {

using namespace std::chrono;

/// The largest size of a mark; fits into 64 bits.
constexpr double largestSize = 9.2e18;
/// As a share of the largest size. On an axis that does not begin at 0, a smaller range would look
/// like a large change.
constexpr double smallestRange = 0.02;

/// 1, 2 or 5 times a power of ten, at least `step`.
double roundStep(double step) {
    const double power = std::pow(10, std::floor(std::log10(std::max(step, 1.0))));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= step)
            return factor * power;
    return 10 * power;
}

/// The distance of two marks: hours, days, months or years.
struct Step {
    enum class Unit { hour, day, month, year };
    Unit unit{};
    int count = 1;
    double seconds = 0;
    const char* pattern = "";
};

constexpr double hourLength = 3'600;
constexpr double dayLength = 24 * hourLength;
constexpr std::array steps{
    Step{Step::Unit::hour, 1, hourLength, "HH:mm"},
    Step{Step::Unit::hour, 3, 3 * hourLength, "HH:mm"},
    Step{Step::Unit::hour, 6, 6 * hourLength, "HH:mm"},
    Step{Step::Unit::day, 1, dayLength, "d MMM"},
    Step{Step::Unit::day, 2, 2 * dayLength, "d MMM"},
    Step{Step::Unit::day, 7, 7 * dayLength, "d MMM"},
    Step{Step::Unit::day, 14, 14 * dayLength, "d MMM"},
    Step{Step::Unit::month, 1, 30 * dayLength, "MMM yyyy"},
    Step{Step::Unit::month, 3, 91 * dayLength, "MMM yyyy"},
    Step{Step::Unit::month, 6, 182 * dayLength, "MMM yyyy"},
    Step{Step::Unit::year, 1, 365 * dayLength, "yyyy"},
    Step{Step::Unit::year, 2, 730 * dayLength, "yyyy"},
};

/// The last possible mark at or before `at`. Hours are counted from midnight, and months from
/// January.
local_seconds startOf(const Step& step, local_seconds at) {
    const year_month_day date(floor<days>(at));
    switch (step.unit) {
    case Step::Unit::hour: {
        const auto midnight = floor<days>(at);
        const auto hour = floor<hours>(at - midnight).count();
        return midnight + hours(hour - hour % step.count);
    }
    case Step::Unit::day:
        return floor<days>(at);
    case Step::Unit::month: {
        const unsigned month = static_cast<unsigned>(date.month()) - 1;
        const unsigned first = month - month % static_cast<unsigned>(step.count);
        return local_days(date.year() / std::chrono::month(first + 1) / 1);
    }
    case Step::Unit::year:
        return local_days(date.year() / January / 1);
    }
    return at;
}

local_seconds next(const Step& step, local_seconds at) {
    const year_month_day date(floor<days>(at));
    switch (step.unit) {
    case Step::Unit::hour:
        return at + hours(step.count);
    case Step::Unit::day:
        return at + days(step.count);
    case Step::Unit::month:
        return local_days(date + months(step.count));
    case Step::Unit::year:
        return local_days(date + years(step.count));
    }
    return at;
}

} // namespace

std::vector<SizeTick> sizeTicks(std::int64_t least, std::int64_t most, std::size_t limit) {
    const double high = static_cast<double>(std::max<std::int64_t>(most, 1));
    double low = static_cast<double>(std::min(least, most));
    if (low < high / 3 || high - low < smallestRange * high)
        low = std::min(low, 0.0);
    const auto intervals = static_cast<double>(std::max<std::size_t>(limit, 3) - 1);
    double step = roundStep((high - low) / intervals);
    double first = std::floor(low / step) * step;
    // Since both ends are rounded, one interval more than allowed can be needed.
    while (std::ceil((high - first) / step) > intervals) {
        step = roundStep(step * 1.01);
        first = std::floor(low / step) * step;
    }
    std::vector<SizeTick> ticks;
    for (int i = 0; ticks.size() < 2 || first + (i - 1) * step < high; ++i) {
        const double value = std::clamp(first + i * step, -largestSize, largestSize);
        const auto bytes = static_cast<std::int64_t>(value);
        ticks.push_back({bytes, bytes == 0 ? "0" : byteString(bytes)});
    }
    return ticks;
}

std::vector<TimeTick> timeTicks(Date since, Date through, std::size_t limit,
                                const Calendar& calendar) {
    const double length = through - since;
    if (!(length > 0) || !std::isfinite(length) || limit == 0)
        return {};
    const auto* const last = steps.end() - 1;
    Step step = *std::ranges::find_if(steps.begin(), last, [&](const Step& each) {
        return length / each.seconds < static_cast<double>(limit);
    });
    while (length / step.seconds >= static_cast<double>(limit)) {
        step.count *= 2;
        step.seconds *= 2;
    }
    std::vector<TimeTick> ticks;
    auto at = startOf(step, calendar.clockAt(since));
    for (Date moment = calendar.momentOf(at); moment <= through;
         at = next(step, at), moment = calendar.momentOf(at))
        if (moment >= since)
            ticks.push_back({moment, calendar.format(moment, step.pattern)});
    return ticks;
}

} // namespace tidemark::chartScale
