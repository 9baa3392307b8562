#pragma once

#include "core/base/Date.h"

#include <memory>
#include <string>

namespace tidemark {

/// Days and clock times in one time zone, by the rules of the IANA database (through ICU).
/// Reading is cheap and a copy is its own; one object is not for several threads at once.
class Calendar {
public:
    /// The user's time zone.
    Calendar();
    /// An IANA zone such as "Europe/Berlin"; an unknown name gives UTC.
    explicit Calendar(const std::string& zone);
    ~Calendar();
    Calendar(const Calendar& other);
    Calendar& operator=(const Calendar& other);
    Calendar(Calendar&& other) noexcept;
    Calendar& operator=(Calendar&& other) noexcept;

    /// The first moment of the day that `date` falls on.
    Date startOfDay(Date date) const;
    /// The first moment of the day after it.
    Date startOfNextDay(Date date) const;

    /// `date` by an ICU pattern such as "HH:mm" in the user's language.
    std::string format(Date date, const std::string& pattern) const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation;
};

} // namespace tidemark
