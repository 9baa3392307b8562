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
    /// `withIDs`: each event with its identifier, which `tidemark show` takes.
    TimelinePrinter(Calendar zone, bool withColour, bool withIDs = false)
        : calendar(std::move(zone)), colour(withColour), ids(withIDs) {}

    std::string text(std::vector<Shared<Event>> events) const;

    /// A date and time as they stand in the program's sentences.
    std::string moment(Date date) const;

private:
    void append(std::string& out, const Event& event, std::size_t timeColumns) const;

    Calendar calendar;
    bool colour;
    bool ids;
};

} // namespace tidemark
