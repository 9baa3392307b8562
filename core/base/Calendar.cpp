#include "core/base/Calendar.h"

#include "core/base/Error.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <map>
#include <mutex>
#include <numeric>
#include <string_view>
#include <utility>

#include <unicode/dtptngen.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

namespace tidemark {

namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::local_seconds;
using std::chrono::seconds;

/// Dates further from 1970 than this, in seconds, are clamped to it. ICU and the C library can
/// still represent it.
constexpr double furthest = 8e12;
constexpr std::int64_t day = 86'400;

std::int64_t unixSeconds(Date date) {
    const double whole = std::floor(date.secondsSince1970());
    return static_cast<std::int64_t>(std::isnan(whole) ? -furthest
                                                       : std::clamp(whole, -furthest, furthest));
}

/// Seconds by which local time of the process is ahead of UTC.
std::int64_t offsetOfProcess(std::int64_t time) {
    const auto moment = static_cast<std::time_t>(time);
    std::tm local{};
    return ::localtime_r(&moment, &local) ? local.tm_gmtoff : 0;
}

std::int64_t offsetOf(const icu::TimeZone& zone, std::int64_t time) {
    std::int32_t standard = 0;
    std::int32_t saving = 0;
    UErrorCode status = U_ZERO_ERROR;
    zone.getOffset(static_cast<UDate>(time) * 1000, false, standard, saving, status);
    return U_SUCCESS(status) ? (standard + saving) / 1000 : 0;
}

/// Converts a pattern, which has the order and punctuation of English, to those of the user's
/// language.
icu::UnicodeString inLanguage(const std::string& pattern) {
    const icu::Locale& locale = icu::Locale::getDefault();
    auto english = icu::UnicodeString::fromUTF8(pattern);
    if (std::string_view(locale.getLanguage()) == "en")
        return english;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> generator(
        icu::DateTimePatternGenerator::createInstance(locale, status));
    if (U_FAILURE(status))
        return english;
    const auto fields = icu::DateTimePatternGenerator::staticGetSkeleton(english, status);
    auto best = generator->getBestPattern(fields, status);
    return U_SUCCESS(status) ? best : english;
}

/// What `inLanguage` returns, kept for each language and pattern: making it takes a millisecond.
icu::UnicodeString shownPattern(const std::string& pattern) {
    static std::mutex mutex;
    // Never destroyed: another thread may still use them when the process ends.
    static auto& made = *new std::map<std::pair<std::string, std::string>, icu::UnicodeString>;
    const std::scoped_lock lock(mutex);
    const std::pair key(icu::Locale::getDefault().getName(), pattern);
    const auto found = made.find(key);
    return found != made.end() ? found->second
                               : made.emplace(key, inLanguage(pattern)).first->second;
}

} // namespace

struct Calendar::Implementation {
    /// Null for the zone of the process.
    std::unique_ptr<icu::TimeZone> zone;
    /// By pattern, since a formatter is expensive to make.
    std::map<std::string, icu::SimpleDateFormat> formatters;

    std::int64_t offset(std::int64_t time) const {
        return zone ? offsetOf(*zone, time) : offsetOfProcess(time);
    }

    /// The first second after `from`, up to `until`, at which local time is ahead of UTC by
    /// `offsetThen`. That must be the offset at `until`.
    std::int64_t firstWith(std::int64_t offsetThen, std::int64_t from, std::int64_t until) const {
        while (until - from > 1) {
            const std::int64_t middle = std::midpoint(from, until);
            (offset(middle) == offsetThen ? until : from) = middle;
        }
        return until;
    }

    icu::SimpleDateFormat& formatter(const std::string& pattern) {
        const auto found = formatters.find(pattern);
        if (found != formatters.end())
            return found->second;
        UErrorCode status = U_ZERO_ERROR;
        icu::SimpleDateFormat made(shownPattern(pattern), status);
        if (U_FAILURE(status))
            throw Error("The calendar of this system is not available.");
        // `format` passes local time counted as if it were UTC.
        made.setTimeZone(*icu::TimeZone::getGMT());
        return formatters.emplace(pattern, std::move(made)).first->second;
    }
};

Calendar::Calendar() : implementation(std::make_unique<Implementation>()) {
    // Reads TZ and /etc/localtime again, which localtime_r(3) does not.
    ::tzset();
}
Calendar::Calendar(const std::string& zone) : implementation(std::make_unique<Implementation>()) {
    implementation->zone.reset(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(zone)));
}
Calendar::~Calendar() = default;
Calendar::Calendar(Calendar&&) noexcept = default;
Calendar& Calendar::operator=(Calendar&&) noexcept = default;
Calendar::Calendar(const Calendar& other) : implementation(std::make_unique<Implementation>()) {
    if (const auto& zone = other.implementation->zone)
        implementation->zone.reset(zone->clone());
}
Calendar& Calendar::operator=(const Calendar& other) {
    return *this = Calendar(other);
}

local_seconds Calendar::clockAt(Date date) const {
    const std::int64_t time = unixSeconds(date);
    return local_seconds(seconds(time + implementation->offset(time)));
}

Date Calendar::momentOf(local_seconds time) const {
    const std::int64_t shown = time.time_since_epoch().count();
    const std::int64_t guess = shown - implementation->offset(shown);
    // The clock changes once in these two days at most.
    const auto [behind, ahead] =
        std::minmax({implementation->offset(guess - day), implementation->offset(guess + day)});
    for (const std::int64_t offset : {ahead, behind})
        if (implementation->offset(shown - offset) == offset)
            return Date::fromUnix(static_cast<double>(shown - offset));
    const std::int64_t change = implementation->firstWith(ahead, shown - ahead, shown - behind);
    return Date::fromUnix(static_cast<double>(change));
}

Date Calendar::startOfDay(Date date) const {
    return momentOf(floor<days>(clockAt(date)));
}

Date Calendar::startOfNextDay(Date date) const {
    return momentOf(floor<days>(clockAt(date)) + days(1));
}

std::string Calendar::format(Date date, const std::string& pattern) const {
    const double shown = static_cast<double>(clockAt(date).time_since_epoch().count());
    icu::UnicodeString text;
    std::string bytes;
    return implementation->formatter(pattern).format(shown * 1000, text).toUTF8String(bytes);
}

} // namespace tidemark
