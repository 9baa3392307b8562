#pragma once

#include <cstdint>

namespace tidemark::demo {

/// Seconds.
inline constexpr double minute = 60;
inline constexpr double hour = 60 * minute;
inline constexpr double day = 24 * hour;

/// Bytes.
inline constexpr std::int64_t megabyte = 1'000'000;
inline constexpr std::int64_t gigabyte = 1'000 * megabyte;

} // namespace tidemark::demo
