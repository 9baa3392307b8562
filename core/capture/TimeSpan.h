#pragma once

#include <optional>
#include <string_view>

/// Spans of time as systemd.time(7) writes them: "15min", "1h 30min", "2.5 s", a bare number of
/// seconds.
namespace tidemark::TimeSpan {

/// The span in seconds. Absent for other texts and for "infinity".
std::optional<double> seconds(std::string_view text);

} // namespace tidemark::TimeSpan
