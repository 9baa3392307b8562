#include "core/presentation/HistoryView.h"

#include "core/base/PhraseSearch.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_set>

namespace tidemark {

namespace {

using enum WorkspaceDestination;
using Events = std::vector<Shared<Event>>;
using Counts = std::map<WorkspaceDestination, std::size_t>;

/// Those whose count is that of their events.
constexpr std::array countedByEvent{timeline,    applications, storage, background,
                                    macActivity, devices,      network};

/// The texts of a record that a search for files, downloads and clips looks at.
void appendSearchText(const MemoryRecord& record, std::string& text) {
    text += record.title;
    for (const auto* part : {&record.text, &record.path, &record.appName, &record.sourceURL})
        if (*part)
            (text += ' ') += **part;
}

bool isFile(MemoryRecord::Kind kind) {
    return kind <= MemoryRecord::Kind::downloaded;
}

/// Counts the memory history, apart from the rest: one file that was seen often is one row there.
class MemoryCounts {
public:
    void add(const MemoryRecord& record) {
        const std::string_view key = record.path ? *record.path : record.id;
        if (isFile(record.kind))
            filePaths.insert(key);
        if (record.kind == MemoryRecord::Kind::downloaded)
            downloadPaths.insert(key);
        if (record.kind == MemoryRecord::Kind::clipboard)
            ++clips;
    }
    void store(Counts& counts) const {
        counts[files] = filePaths.size();
        counts[downloads] = downloadPaths.size();
        counts[clipboard] = clips;
    }

private:
    std::unordered_set<std::string_view> filePaths;
    std::unordered_set<std::string_view> downloadPaths;
    std::size_t clips = 0;
};

MemoryCounts countMemory(const Events& events, Date from, std::string_view search) {
    MemoryCounts counts;
    PhraseSearch phrase(search);
    std::string text;
    for (const Shared<Event>& event : events) {
        if (!event->memory || event->memory->timestamp < from)
            continue;
        if (!search.empty()) {
            text.clear();
            appendSearchText(*event->memory, text);
            if (!phrase.isIn(text))
                continue;
        }
        counts.add(*event->memory);
    }
    return counts;
}

Counts countPlaces(const Events& events) {
    Counts counts;
    std::array<std::size_t, countedByEvent.size()> numbers{};
    for (const Shared<Event>& event : events)
        for (std::size_t i = 0; i < numbers.size(); ++i)
            numbers[i] += includes(countedByEvent[i], *event) ? 1 : 0;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        counts[countedByEvent[i]] = numbers[i];
    return counts;
}

bool isAt(const HistoryPlace& place, const Event& event) {
    if (!place.systemFilters.empty())
        return std::ranges::any_of(place.systemFilters, [&](WorkspaceDestination filter) {
            return includes(filter, event);
        });
    return place.isInSnapshot || includes(place.workspace, event);
}

} // namespace

HistoryView presentHistory(const MergedHistory& history, const HistoryPlace& place, Date now,
                           const Calendar& calendar) {
    const Date windowStart =
        place.windowStart.value_or(cutoff(place.window, now, place.customWindowDays));
    const Date after =
        place.stateComparison ? Date::distantPast() : place.since.value_or(windowStart);
    const auto& source = place.stateComparison ? *place.stateComparison : history.timeline;
    const auto build = [&](const Events& events, const auto& categories, std::string_view search) {
        return TimelinePresentation::build(events, after, Date::distantFuture(), std::nullopt,
                                           categories, search, calendar);
    };

    // Searched once, for the counts and for the list.
    Events matching = build(source, std::nullopt, place.search).events;
    HistoryView view;
    view.sidebarCounts = countPlaces(matching);
    countMemory(history.events, windowStart, place.search).store(view.sidebarCounts);

    std::erase_if(matching, [&](const Shared<Event>& event) { return !isAt(place, *event); });
    const auto& filters = place.categoryFilters;
    view.presentation =
        build(matching, filters.empty() ? std::nullopt : std::optional(filters), "");
    return view;
}

} // namespace tidemark
