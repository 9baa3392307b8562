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

/// Sidebar items whose count is the number of their events.
constexpr std::array countedByEvent{timeline,    applications, storage, background,
                                    macActivity, devices,      network};

/// Appends the texts of a record that are searched in the lists of files, downloads and clips.
void appendSearchText(const MemoryRecord& record, std::string& text) {
    text += record.title;
    for (const auto* part : {&record.text, &record.path, &record.appName, &record.sourceURL})
        if (*part)
            (text += ' ') += **part;
}

bool isFile(MemoryRecord::Kind kind) {
    return kind <= MemoryRecord::Kind::downloaded;
}

/// The rows in the lists of files, downloads and clips. A file that was seen several times is one
/// row, that of its newest record.
class MemoryRows {
public:
    /// Keeps the rows of `place` and counts those of all three lists.
    explicit MemoryRows(WorkspaceDestination place) : listed(place) {}

    /// Must be called with the newest events first.
    void add(const Shared<Event>& event) {
        const MemoryRecord& record = *event->memory;
        const std::string_view key = record.path ? *record.path : record.id;
        if (record.kind == MemoryRecord::Kind::clipboard)
            addRow(clipboard, event);
        if (isFile(record.kind) && filePaths.insert(key).second)
            addRow(files, event);
        if (record.kind == MemoryRecord::Kind::downloaded && downloadPaths.insert(key).second)
            addRow(downloads, event);
    }
    void store(Counts& into) const {
        for (const auto place : {files, downloads, clipboard}) {
            const auto count = counts.find(place);
            into[place] = count == counts.end() ? 0 : count->second;
        }
    }
    Events take() { return std::move(rows); }

private:
    void addRow(WorkspaceDestination place, const Shared<Event>& event) {
        ++counts[place];
        if (place == listed)
            rows.push_back(event);
    }

    const WorkspaceDestination listed;
    Events rows;
    Counts counts;
    std::unordered_set<std::string_view> filePaths;
    std::unordered_set<std::string_view> downloadPaths;
};

MemoryRows memoryRows(const Events& events, const HistoryPlace& place, Date from) {
    MemoryRows rows(place.workspace);
    PhraseSearch phrase(place.search);
    std::string text;
    for (const Shared<Event>& event : events) {
        if (!event->memory || event->memory->timestamp < from)
            continue;
        if (!place.search.empty()) {
            text.clear();
            appendSearchText(*event->memory, text);
            if (!phrase.isIn(text))
                continue;
        }
        rows.add(event);
    }
    return rows;
}

/// True when one of the three lists of the memory history is shown.
bool listsMemory(const HistoryPlace& place) {
    const bool isOther =
        place.isInSnapshot || place.stateComparison || !place.systemFilters.empty();
    const auto category = facts(place.workspace).category;
    return !isOther && category && !appearsInTimeline(*category);
}

/// True when a filter includes categories that are not in the timeline.
bool filtersMemory(const HistoryPlace& place) {
    return place.workspace == timeline
           && !std::ranges::all_of(place.categoryFilters, appearsInTimeline);
}

/// The categories to filter by; absent when there is no filter, or when it is just the category of
/// the sidebar item.
std::optional<std::set<EventCategory>> categoriesAt(const HistoryPlace& place) {
    const auto& filters = place.categoryFilters;
    const auto own = facts(place.workspace).category;
    const bool isImplied = own && filters == std::set{*own};
    return filters.empty() || isImplied ? std::nullopt : std::optional(filters);
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
    return place.isInSnapshot || filtersMemory(place) || includes(place.workspace, event);
}

Date windowStart(const HistoryPlace& place, Date now) {
    return place.windowStart.value_or(cutoff(place.window, now, place.customWindowDays));
}

} // namespace

HistoryView presentHistory(const MergedHistory& history, const HistoryPlace& place, Date now,
                           const Calendar& calendar) {
    const Date start = windowStart(place, now);
    const Date after = place.stateComparison ? Date::distantPast() : place.since.value_or(start);
    const auto& recorded = filtersMemory(place) ? history.events : history.timeline;
    const auto& source = place.stateComparison ? *place.stateComparison : recorded;
    // Searched once, for the counts and for the list.
    Events matching =
        TimelinePresentation::matching(source, after, Date::distantFuture(), place.search);
    HistoryView view;
    view.sidebarCounts = countPlaces(matching);
    MemoryRows rows = memoryRows(history.events, place, start);
    rows.store(view.sidebarCounts);

    if (listsMemory(place))
        matching = rows.take();
    else
        std::erase_if(matching, [&](const Shared<Event>& event) { return !isAt(place, *event); });
    view.presentation =
        TimelinePresentation::build(matching, Date::distantPast(), Date::distantFuture(),
                                    std::nullopt, categoriesAt(place), "", calendar);
    return view;
}

bool mayAppear(const HistoryPlace& place, const Event& event) {
    return appearsInTimeline(event.category) || listsMemory(place) || filtersMemory(place);
}

void recountMemory(HistoryView& view, const MergedHistory& history, const HistoryPlace& place,
                   Date now) {
    memoryRows(history.events, place, windowStart(place, now)).store(view.sidebarCounts);
}

} // namespace tidemark
