#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"

#include <optional>
#include <string_view>

namespace tidemark {

/// How often captures are due, in the order of the user's list.
enum class CaptureSchedule {
    manual,
    halfHourly,
    hourly,
    everyThreeHours,
    everySixHours,
    everyTwelveHours,
    daily,
};

template <>
inline constexpr auto json::rawValues<CaptureSchedule> =
    std::to_array<json::RawValue<CaptureSchedule>>({
        {CaptureSchedule::manual, "manual"},
        {CaptureSchedule::halfHourly, "halfHourly"},
        {CaptureSchedule::hourly, "hourly"},
        {CaptureSchedule::everyThreeHours, "everyThreeHours"},
        {CaptureSchedule::everySixHours, "everySixHours"},
        {CaptureSchedule::everyTwelveHours, "everyTwelveHours"},
        {CaptureSchedule::daily, "daily"},
    });

/// Seconds from one capture to the next; absent when none is due by itself.
std::optional<double> seconds(CaptureSchedule schedule);
std::string_view label(CaptureSchedule schedule);

/// When the next capture is due. Absent for `manual`. Also absent without a last capture: then any
/// other schedule makes one due at once.
std::optional<Date> nextCapture(CaptureSchedule schedule, std::optional<Date> lastCapture);
bool isDue(CaptureSchedule schedule, std::optional<Date> lastCapture, Date now);

} // namespace tidemark
