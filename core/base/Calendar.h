#pragma once

#include "core/base/Date.h"

#include <chrono>
#include <memory>
#include <string>

namespace tidemark {

/// Days and clock times in one time zone, in the Gregorian calendar. Copies are independent; one
/// object must not be used by several threads at once. A date too far away for any calendar counts
/// as the furthest that this one can represent, some 250,000 years away.
class Calendar {
public:
    /// The zone of the process, as localtime_r(3) applies it: the variable TZ in any of its forms,
    /// else /etc/localtime. A change of the zone takes effect when a calendar is made, so make one
    /// for each use.
    Calendar();
    /// A zone of the IANA database (through ICU), such as "Europe/Berlin"; an unknown name is UTC.
    explicit Calendar(const std::string& zone);
    ~Calendar();
    Calendar(const Calendar& other);
    Calendar& operator=(const Calendar& other);
    Calendar(Calendar&& other) noexcept;
    Calendar& operator=(Calendar&& other) noexcept;

    /// The local time at `date`, to the second.
    std::chrono::local_seconds clockAt(Date date) const;
    /// The moment of a local time. If there are two, because the clock is put back, the first; if
    /// there is none, because the clock is put forward past `time`, the moment at which that
    /// happens.
    Date momentOf(std::chrono::local_seconds time) const;

    /// The first moment of the day that `date` falls on.
    Date startOfDay(Date date) const;
    /// The first moment of the day after it.
    Date startOfNextDay(Date date) const;

    /// Formats `date` by an ICU pattern such as "HH:mm" in the user's language. Throws `Error` when
    /// the system has no data of calendars.
    std::string format(Date date, const std::string& pattern) const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation;
};

} // namespace tidemark
