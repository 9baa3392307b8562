#pragma once

#include "core/base/Date.h"

#include <optional>
#include <string>
#include <string_view>

namespace tidemark {

/// Reads an instant as ISO 8601 writes it in full, "2024-05-01T12:00:00Z", with or without a
/// fraction of the second, and with "Z" or an offset such as "+02:00" or "+0200". Absent for
/// anything else.
std::optional<Date> iso8601Date(std::string_view text);

/// An instant in UTC, rounded down to the second, "2024-05-01T12:00:00Z". An instant outside of the
/// years 1 to 9999 is clamped to their first or last second: the format has four digits for the
/// year, and many readers reject the year 0. Absent for NaN.
std::optional<std::string> iso8601Text(Date date);

} // namespace tidemark
