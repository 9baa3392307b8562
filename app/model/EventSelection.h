#pragma once

#include "core/base/Uuid.h"
#include "core/records/Event.h"

#include <vector>

namespace tidemark {

/// The event that the user looks at, if any, and where the list is to be scrolled.
class EventSelection {
public:
    const OptionalShared<Event>& event() const { return selected; }
    /// Another identifier asks the list to scroll to its top.
    const Uuid& scrollRequest() const { return scroll; }

    /// True when it is another one than before.
    bool select(OptionalShared<Event> event);
    void clear() { selected = {}; }
    void scrollToTop() { scroll = Uuid::random(); }
    /// Clears the selection unless the event is among these.
    void keepIfIn(const std::vector<Shared<Event>>& events);
    /// Replaces the event by the one of these with its identifier, if there is one.
    void takeNewerForm(const std::vector<Shared<Event>>& events);

private:
    OptionalShared<Event> selected;
    Uuid scroll = Uuid::random();
};

} // namespace tidemark
