#pragma once

#include "core/base/Calendar.h"
#include "core/records/Event.h"

#include <string>
#include <vector>

namespace tidemark {

/// Prints a timeline as text: grouped by day, newest first, each event with its time or interval
/// and its two lines. Prominent events are marked.
class TimelinePrinter {
public:
    TimelinePrinter(Calendar calendar, bool colour)
        : calendar(std::move(calendar)), colour(colour) {}

    std::string text(std::vector<Shared<Event>> events) const;

    /// A date and time as text.
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
