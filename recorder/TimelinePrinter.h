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
    /// `withIDs` adds the identifier of each event, which `tidemark show` takes.
    TimelinePrinter(Calendar calendar, bool colour, bool withIDs = false)
        : calendar(std::move(calendar)), colour(colour), ids(withIDs) {}

    std::string text(std::vector<Shared<Event>> events) const;

    /// A date and time as text.
    std::string moment(Date date) const;

private:
    void append(std::string& out, const Event& event, std::size_t timeColumns) const;

    Calendar calendar;
    bool colour;
    bool ids;
};

} // namespace tidemark
