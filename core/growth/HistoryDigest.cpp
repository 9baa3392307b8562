#include "core/growth/HistoryDigest.h"

#include "core/base/Text.h"
#include "core/growth/GrowthText.h"
#include "core/growth/StorageChartText.h"
#include "core/presentation/SystemWords.h"

#include <algorithm>

namespace tidemark {

namespace {

std::vector<Shared<Event>> inPeriod(const std::vector<Shared<Event>>& events, Date since,
                                    Date through) {
    std::vector<Shared<Event>> found;
    for (const auto& event : events)
        if (event->timestamp > since && event->timestamp <= through)
            found.push_back(event);
    return found;
}

std::vector<HistoryDigest::Count> countsOf(const std::vector<Shared<Event>>& events) {
    std::vector<HistoryDigest::Count> counts;
    for (const auto& each : json::rawValues<EventCategory>) {
        if (!appearsInTimeline(each.value))
            continue;
        const auto number = std::ranges::count(events, each.value,
                                               [](const auto& event) { return event->category; });
        if (number > 0)
            counts.push_back({each.value, static_cast<std::size_t>(number)});
    }
    return counts;
}

std::vector<GrowthItem> largestOf(std::vector<GrowthItem> items) {
    std::erase_if(items, [](const auto& item) { return item.change() == 0; });
    if (items.size() > HistoryDigest::changeLimit)
        items.resize(HistoryDigest::changeLimit);
    return items;
}

} // namespace

std::vector<NewBackgroundItem> newBackgroundItems(const std::vector<Shared<Event>>& events) {
    std::vector<NewBackgroundItem> items;
    for (const auto& event : events)
        for (const auto& change : event->changes)
            if (const auto* added = std::get_if<change::BackgroundAdded>(&change))
                items.push_back({oneLine(added->value->identifier), event});
    return items;
}

HistoryDigest HistoryDigest::of(const GrowthSource& source,
                                const std::vector<Shared<Event>>& timeline, const GapSource& gaps,
                                Date since, Date through, const Calendar& calendar) {
    HistoryDigest digest;
    digest.since = since;
    digest.through = through;
    const auto events = inPeriod(timeline, since, through);
    digest.counts = countsOf(events);
    digest.background = newBackgroundItems(events);
    digest.gaps = gapRows(gaps, since, through, calendar);
    auto growth = GrowthReport::of(source, since, through);
    digest.freeSpace = growthText::summary(growth);
    digest.largest = largestOf(std::move(growth.items));
    return digest;
}

} // namespace tidemark
