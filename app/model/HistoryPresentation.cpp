#include "app/model/HistoryPresentation.h"

#include <algorithm>
#include <utility>

namespace tidemark {

void HistoryPresentation::show(const MergedHistory& history, HistoryPlace place, Date now) {
    shownPlace = std::move(place);
    made = presentHistory(history, shownPlace, now, Calendar());
    ++revisions;
}

void HistoryPresentation::showNothing() {
    made.presentation = {};
    ++revisions;
}

void HistoryPresentation::update(const MergedHistory& history,
                                 const MemoryEventList::Change& change, Date now) {
    const auto appears = [this](const Shared<Event>& event) {
        return mayAppear(shownPlace, *event);
    };
    if (std::ranges::any_of(change.added, appears) || std::ranges::any_of(change.removed, appears))
        show(history, shownPlace, now);
    else
        recountMemory(made, history, shownPlace, now);
}

} // namespace tidemark
