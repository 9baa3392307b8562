#include "core/presentation/MergedHistory.h"

#include "core/timeline/TimelinePresentation.h"

namespace tidemark {

MergedHistory MergedHistory::of(std::vector<Shared<Event>> events) {
    MergedHistory merged;
    merged.full = TimelinePresentation::newestFirst(std::move(events));
    merged.events.reserve(merged.full.size());
    merged.timeline.reserve(merged.full.size());
    for (const Shared<Event>& event : merged.full) {
        if (event->memory && event->memory->kind == MemoryRecord::Kind::appUsage)
            continue;
        merged.events.push_back(event);
        if (appearsInTimeline(event->category))
            merged.timeline.push_back(event);
    }
    return merged;
}

} // namespace tidemark
