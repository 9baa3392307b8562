#include "core/presentation/MergedHistory.h"

#include "core/timeline/TimelinePresentation.h"

#include <algorithm>

namespace tidemark {

namespace {

using Events = std::vector<Shared<Event>>;

bool isLegacy(const Event& event) {
    return event.memory && event.memory->kind == MemoryRecord::Kind::appUsage;
}

bool isInTimeline(const Event& event) {
    return !isLegacy(event) && appearsInTimeline(event.category);
}

/// The events of a sorted list that were not copied yet.
class Remaining {
public:
    explicit Remaining(const Events& events) : at(events.begin()), end(events.end()) {}

    /// Appends the events before `event` to `list`.
    void copyUntil(const Shared<Event>& event, Events& list) {
        const auto place = std::lower_bound(at, end, event, TimelinePresentation::isBefore);
        list.insert(list.end(), at, place);
        at = place;
    }
    void skip(const Shared<Event>& event) {
        if (at != end && at->sameObject(event))
            ++at;
    }
    void copyAll(Events& list) {
        list.insert(list.end(), at, end);
        at = end;
    }

private:
    Events::const_iterator at;
    const Events::const_iterator end;
};

/// The list `before` without `removed` and with `added`, of which only events that `belongs`
/// accepts are used. All lists are in the order `TimelinePresentation::isBefore`.
template <class Predicate>
Events changedList(const Events& before, const Events& removed, const Events& added,
                   Predicate belongs) {
    Events list;
    list.reserve(before.size() + added.size());
    Remaining remaining(before);
    auto gone = removed.begin();
    // Of a removed and an added event at the same position, the removed one is handled first.
    const auto skipUntil = [&](const auto& isReached) {
        for (; gone != removed.end() && !isReached(*gone); ++gone) {
            if (!belongs(**gone))
                continue;
            remaining.copyUntil(*gone, list);
            remaining.skip(*gone);
        }
    };
    for (const auto& event : added) {
        if (!belongs(*event))
            continue;
        skipUntil([&](const auto& old) { return TimelinePresentation::isBefore(event, old); });
        remaining.copyUntil(event, list);
        list.push_back(event);
    }
    skipUntil([](const auto&) { return false; });
    remaining.copyAll(list);
    return list;
}

} // namespace

MergedHistory MergedHistory::changed(Events removed, Events added) const {
    removed = TimelinePresentation::newestFirst(std::move(removed));
    added = TimelinePresentation::newestFirst(std::move(added));
    const auto isAny = [](const Event&) { return true; };
    const auto isShown = [](const Event& event) { return !isLegacy(event); };
    return {changedList(full, removed, added, isAny), changedList(events, removed, added, isShown),
            changedList(timeline, removed, added, isInTimeline)};
}

MergedHistory MergedHistory::of(std::vector<Shared<Event>> events) {
    MergedHistory merged;
    merged.full = TimelinePresentation::newestFirst(std::move(events));
    merged.events.reserve(merged.full.size());
    merged.timeline.reserve(merged.full.size());
    for (const Shared<Event>& event : merged.full) {
        if (!isLegacy(*event))
            merged.events.push_back(event);
        if (isInTimeline(*event))
            merged.timeline.push_back(event);
    }
    return merged;
}

} // namespace tidemark
