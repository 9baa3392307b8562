#include "core/capture/CaptureSchedule.h"

namespace tidemark {

namespace {

struct Row {
    CaptureSchedule schedule;
    std::optional<double> seconds;
    std::string_view label;
};

constexpr auto rows = std::to_array<Row>({
    {CaptureSchedule::manual, {}, "Manual only"},
    {CaptureSchedule::halfHourly, 1800, "Every 30 minutes"},
    {CaptureSchedule::hourly, 3600, "Every hour"},
    {CaptureSchedule::everyThreeHours, 10800, "Every 3 hours"},
    {CaptureSchedule::everySixHours, 21600, "Every 6 hours"},
    {CaptureSchedule::everyTwelveHours, 43200, "Every 12 hours"},
    {CaptureSchedule::daily, 86400, "Every day (24 hours)"},
});

const Row& rowOf(CaptureSchedule schedule) {
    return rows.at(static_cast<std::size_t>(schedule));
}

} // namespace

std::optional<double> seconds(CaptureSchedule schedule) {
    return rowOf(schedule).seconds;
}

std::string_view label(CaptureSchedule schedule) {
    return rowOf(schedule).label;
}

std::optional<Date> nextCapture(CaptureSchedule schedule, std::optional<Date> lastCapture) {
    const auto period = seconds(schedule);
    return period && lastCapture ? std::optional(*lastCapture + *period) : std::nullopt;
}

bool isDue(CaptureSchedule schedule, std::optional<Date> lastCapture, Date now) {
    if (schedule == CaptureSchedule::manual)
        return false;
    return !lastCapture || now >= *nextCapture(schedule, lastCapture);
}

} // namespace tidemark
