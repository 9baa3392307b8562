#pragma once

#include "core/base/Uuid.h"
#include "core/records/Event.h"

#include <vector>

namespace tidemark {

/// The selected event, if any, and requests to scroll the list to it.
class EventSelection {
public:
    const OptionalShared<Event>& event() const { return selected; }
    /// Changed when the list shall scroll to the selected event, even if that was selected before.
    const Uuid& scrollRequest() const { return scroll; }

    /// True when the selection changed.
    bool select(OptionalShared<Event> event);
    void clear() { selected = {}; }
    void requestScroll() { scroll = Uuid::random(); }
    /// Clears the selection unless the selected event is in `events`.
    void keepIfIn(const std::vector<Shared<Event>>& events);
    /// Replaces the selected event by the one in `events` with the same id, if there is one.
    void takeNewerForm(const std::vector<Shared<Event>>& events);

private:
    OptionalShared<Event> selected;
    Uuid scroll = Uuid::random();
};

} // namespace tidemark
