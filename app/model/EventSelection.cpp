#include "app/model/EventSelection.h"

#include <algorithm>
#include <utility>

namespace tidemark {

namespace {

auto find(const std::vector<Shared<Event>>& events, const Event& wanted) {
    return std::ranges::find_if(events,
                                [&](const Shared<Event>& event) { return event->id == wanted.id; });
}

} // namespace

bool EventSelection::select(OptionalShared<Event> event) {
    if (event == selected)
        return false;
    selected = std::move(event);
    return true;
}

void EventSelection::keepIfIn(const std::vector<Shared<Event>>& events) {
    if (selected && find(events, *selected) == events.end())
        clear();
}

void EventSelection::takeNewerForm(const std::vector<Shared<Event>>& events) {
    if (!selected)
        return;
    if (const auto found = find(events, *selected); found != events.end())
        selected = *found;
}

} // namespace tidemark
