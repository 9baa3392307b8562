#include "core/base/Calendar.h"

#include "core/base/Error.h"

#include <algorithm>
#include <map>

#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

namespace tidemark {

struct Calendar::Implementation {
    std::unique_ptr<icu::TimeZone> zone;
    std::unique_ptr<icu::Calendar> calendar;
    /// By pattern; one is dear to make.
    std::map<std::string, icu::SimpleDateFormat> formatters;

    explicit Implementation(icu::TimeZone* adopted) : zone(adopted) {
        UErrorCode status = U_ZERO_ERROR;
        calendar = std::make_unique<icu::GregorianCalendar>(*zone, status);
        if (U_FAILURE(status))
            throw Error("The calendar of this system is not available.");
    }
};

namespace {

/// ICU counts milliseconds and takes no infinity; beyond this no calendar is meant.
constexpr double furthest = 8e15;

UDate toICU(Date date) {
    return std::clamp(date.secondsSince1970() * 1000, -furthest, furthest);
}

Date fromICU(UDate date) {
    return Date::fromUnix(date / 1000);
}

/// Sets the clock of `calendar` to the first moment of its day.
void moveToStartOfDay(icu::Calendar& calendar) {
    for (const UCalendarDateFields field :
         {UCAL_HOUR_OF_DAY, UCAL_MINUTE, UCAL_SECOND, UCAL_MILLISECOND})
        calendar.set(field, 0);
    // Where midnight is skipped the day begins behind the gap; where it comes twice, with the
    // first one.
    calendar.setSkippedWallTimeOption(UCAL_WALLTIME_NEXT_VALID);
    calendar.setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
}

} // namespace

Calendar::Calendar()
    : implementation(std::make_unique<Implementation>(icu::TimeZone::createDefault())) {}
Calendar::Calendar(const std::string& zone)
    : implementation(std::make_unique<Implementation>(
          icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(zone)))) {}
Calendar::~Calendar() = default;
Calendar::Calendar(Calendar&&) noexcept = default;
Calendar& Calendar::operator=(Calendar&&) noexcept = default;
Calendar::Calendar(const Calendar& other)
    : implementation(std::make_unique<Implementation>(other.implementation->zone->clone())) {}
Calendar& Calendar::operator=(const Calendar& other) {
    implementation = std::make_unique<Implementation>(other.implementation->zone->clone());
    return *this;
}

Date Calendar::startOfDay(Date date) const {
    UErrorCode status = U_ZERO_ERROR;
    auto& calendar = *implementation->calendar;
    calendar.setTime(toICU(date), status);
    moveToStartOfDay(calendar);
    const UDate start = calendar.getTime(status);
    return U_SUCCESS(status) ? fromICU(start) : date;
}

Date Calendar::startOfNextDay(Date date) const {
    UErrorCode status = U_ZERO_ERROR;
    auto& calendar = *implementation->calendar;
    calendar.setTime(toICU(date), status);
    calendar.add(UCAL_DAY_OF_MONTH, 1, status);
    moveToStartOfDay(calendar);
    const UDate start = calendar.getTime(status);
    return U_SUCCESS(status) ? fromICU(start) : date;
}

std::string Calendar::format(Date date, const std::string& pattern) const {
    auto& formatters = implementation->formatters;
    auto found = formatters.find(pattern);
    if (found == formatters.end()) {
        UErrorCode status = U_ZERO_ERROR;
        found =
            formatters.try_emplace(pattern, icu::UnicodeString::fromUTF8(pattern), status).first;
        found->second.setTimeZone(*implementation->zone);
    }
    icu::UnicodeString text;
    std::string bytes;
    return found->second.format(toICU(date), text).toUTF8String(bytes);
}

} // namespace tidemark
