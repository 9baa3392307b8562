#pragma once

#include "core/base/Calendar.h"

#include <string>

namespace tidemark {

/// Words that several sections use.
namespace inspectionWords {

inline constexpr const char* notReported = "Not reported";
inline constexpr const char* notPresent = "Not present";
inline constexpr const char* arrow = " → ";

/// A date and time, to the second.
inline std::string moment(Date date, const Calendar& calendar) {
    return calendar.format(date, "d MMM yyyy, HH:mm:ss");
}

/// Two moments, with the date only once where it is the same.
inline std::string interval(Date start, Date end, const Calendar& calendar) {
    const bool isWithinDay = calendar.startOfDay(start) == calendar.startOfDay(end);
    return moment(start, calendar) + " – "
           + (isWithinDay ? calendar.format(end, "HH:mm:ss") : moment(end, calendar));
}

} // namespace inspectionWords

} // namespace tidemark
