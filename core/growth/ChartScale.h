#pragma once

#include "core/base/Calendar.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// The marks on the axes of a chart.
namespace tidemark::chartScale {

struct SizeTick {
    std::int64_t bytes = 0;
    std::string label;

    bool operator==(const SizeTick&) const = default;
};

/// Round sizes (1, 2 or 5 times a power of ten) that include `least` and `most`, at most `limit`
/// (three, if `limit` is less) and at least two, each larger than the one before. The first and the
/// last one are the bounds of the axis. The axis begins at 0 where `least` is less than a third of
/// `most`, or where they differ by less than 2 % of `most`.
std::vector<SizeTick> sizeTicks(std::int64_t least, std::int64_t most, std::size_t limit);

struct TimeTick {
    Date at;
    std::string label;

    bool operator==(const TimeTick&) const = default;
};

/// The starts of hours, days, months or years between `since` and `through`, whichever give at most
/// `limit` marks.
std::vector<TimeTick> timeTicks(Date since, Date through, std::size_t limit,
                                const Calendar& calendar);

} // namespace tidemark::chartScale
