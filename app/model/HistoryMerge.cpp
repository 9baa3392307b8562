#include "app/model/HistoryMerge.h"

#include "core/activity/ActivityEventBuilder.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tidemark {

bool HistoryMerge::isStale(const ModelState& state) const {
    return journalRevision != state.journalRevision()
           || activityRevision != state.activityRevision();
}

void HistoryMerge::update(const ModelState& state) {
    if (!isStale(state))
        return;
    if (std::exchange(journalRevision, state.journalRevision()) != state.journalRevision()) {
        const auto& journal = state.journal();
        journalEvents = journal->events;
        std::ranges::move(journal->installationEvents(), std::back_inserter(journalEvents));
    }
    if (std::exchange(activityRevision, state.activityRevision()) != state.activityRevision())
        activityEvents = ActivityEventBuilder::build(state.systemActivity());
    Events all = memory.events();
    all.reserve(all.size() + journalEvents.size() + activityEvents.size());
    for (const Events* source : {&journalEvents, &activityEvents})
        all.insert(all.end(), source->begin(), source->end());
    set(MergedHistory::of(std::move(all)));
}

MemoryEventList::Change HistoryMerge::update(const MemoryArchive& archive) {
    MemoryEventList::Change change = memory.update(archive.records);
    if (!change.isEmpty())
        set(merged->changed(change.removed, change.added));
    return change;
}

void HistoryMerge::set(MergedHistory history) {
    merged = std::make_shared<const MergedHistory>(std::move(history));
    ++merges;
}

} // namespace tidemark
