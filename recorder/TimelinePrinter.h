#pragma once

#include "core/base/Calendar.h"
#include "core/records/Event.h"

#include <string>
#include <vector>

namespace tidemark {

/// A timeline for people: grouped by day, newest first, each event with its time, or its interval
/// where it is one, with its two lines and, when it asks for attention, with a mark.
class TimelinePrinter {
public:
    TimelinePrinter(Calendar zone, bool withColour)
        : calendar(std::move(zone)), colour(withColour) {}

    std::string text(std::vector<Shared<Event>> events) const;

    /// A date and time as they stand in the program's sentences.
    std::string moment(Date date) const;

private:
    std::string times(const Event& event) const;
    const char* startPattern(const Event& event) const;
    void append(std::string& out, const Event& event, std::size_t timeColumns) const;
    std::string styled(std::string_view text, std::string_view style) const;

    Calendar calendar;
    bool colour;
};

} // namespace tidemark
