#pragma once

#include "core/base/Calendar.h"

#include <cstdint>
#include <optional>
#include <string>

/// Parses the times given to commands and formats those in their output.
namespace tidemark::historyTime {

/// The time given as "12h", "7d" or "3w" before `now`, or as "2026-05-31", meaning local midnight.
/// The empty text is the distant past. Throws `UsageError` for anything else.
Date since(const std::string& text, Date now);

/// The check of an option with such a time: throws `UsageError` for a text that `since` can't read.
void checkSince(const std::string& text);
void checkSince(const std::optional<std::string>& text);

/// The days of a custom time window, from "1d" to "365d"; absent for any other text.
std::optional<std::int64_t> days(const std::string& text);

/// A date and time as text; `absent` if there is none.
std::string moment(std::optional<Date> date, const char* absent = "",
                   const Calendar& calendar = Calendar());

} // namespace tidemark::historyTime
