#pragma once

#include "core/base/Uuid.h"
#include "core/records/Event.h"

#include <vector>

namespace tidemark {

/// The selected event, if any, and requests to scroll the list.
class EventSelection {
public:
    const OptionalShared<Event>& event() const { return selected; }
    /// When this changes, the list scrolls to its top.
    const Uuid& scrollRequest() const { return scroll; }

    /// True when the selection changed.
    bool select(OptionalShared<Event> event);
    void clear() { selected = {}; }
    void scrollToTop() { scroll = Uuid::random(); }
    /// Clears the selection unless the selected event is in `events`.
    void keepIfIn(const std::vector<Shared<Event>>& events);
    /// Replaces the selected event by the one in `events` with the same id, if there is one.
    void takeNewerForm(const std::vector<Shared<Event>>& events);

private:
    OptionalShared<Event> selected;
    Uuid scroll = Uuid::random();
};

} // namespace tidemark
