#pragma once

#include "core/base/Calendar.h"

#include <cstdint>
#include <optional>
#include <string>

/// Times as they are given to commands and shown by them.
namespace tidemark::historyTime {

/// The moment that "12h", "7d", "3w" (back from `now`) or "2026-05-31" (its local midnight) means.
/// Throws `Error` for anything else. The empty text is the distant past.
Date since(const std::string& text, Date now);

/// The days of a custom time window: "10d", from "1d" to "365d".
std::optional<std::int64_t> days(const std::string& text);

/// A date and time in the program's answers; `absent` where there is none.
std::string moment(std::optional<Date> date, const char* absent = "",
                   const Calendar& calendar = Calendar());

} // namespace tidemark::historyTime
