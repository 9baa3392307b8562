#pragma once

#include <cstdint>
#include <limits>

/// Saturating arithmetic, for sizes that may come from a damaged document: a result that does not
/// fit into 64 bits becomes the nearest value that does.
namespace tidemark {

constexpr std::int64_t saturatingDifference(std::int64_t a, std::int64_t b) {
    std::int64_t result = 0;
    if (!__builtin_sub_overflow(a, b, &result))
        return result;
    return a < b ? std::numeric_limits<std::int64_t>::min()
                 : std::numeric_limits<std::int64_t>::max();
}

constexpr std::int64_t saturatingSum(std::int64_t a, std::int64_t b) {
    std::int64_t result = 0;
    if (!__builtin_add_overflow(a, b, &result))
        return result;
    return a < 0 ? std::numeric_limits<std::int64_t>::min()
                 : std::numeric_limits<std::int64_t>::max();
}

/// How far two values are apart; never negative.
constexpr std::int64_t distanceBetween(std::int64_t a, std::int64_t b) {
    return a < b ? saturatingDifference(b, a) : saturatingDifference(a, b);
}

} // namespace tidemark
