#include "core/timeline/TimelinePresentation.h"

#include "core/base/PhraseSearch.h"
#include "core/timeline/EventDisplay.h"

#include <algorithm>
#include <iterator>

namespace tidemark {

namespace {

/// The counter of each category, in declared order.
constexpr std::array counts{
    &TimelinePresentation::applicationCount, &TimelinePresentation::backgroundCount,
    &TimelinePresentation::storageCount,     &TimelinePresentation::systemCount,
    &TimelinePresentation::networkingCount,  &TimelinePresentation::fileCount,
    &TimelinePresentation::downloadCount,    &TimelinePresentation::clipboardCount,
};
static_assert(counts.size() == json::rawValues<EventCategory>.size());

/// Appends all texts of an event that are searched.
void appendSearchText(const Event& event, std::string& text) {
    text += displayTitle(event);
    text += ' ';
    text += displaySubtitle(event);
    text += ' ';
    if (event.path)
        text += *event.path;
    text += ' ';
    if (event.memory && event.memory->text)
        text += *event.memory->text;
    text += ' ';
    if (event.memory && event.memory->appName)
        text += *event.memory->appName;
}

/// Tests whether an event is later than `after`, not later than `through`, and contains a text.
class EventFilter {
public:
    EventFilter(Date after, Date through, std::string_view search)
        : after(after), through(through), isSearching(!search.empty()), phrase(search) {}

    bool passes(const Event& event) {
        if (!(event.timestamp > after && event.timestamp <= through))
            return false;
        if (!isSearching)
            return true;
        text.clear();
        appendSearchText(event, text);
        return phrase.isIn(text);
    }

private:
    const Date after;
    const Date through;
    const bool isSearching;
    PhraseSearch phrase;
    std::string text;
};

/// Groups a list by day. Events are in order of time, so the calendar is only used when an event is
/// not in the same day as the one before.
class DayGrouping {
public:
    DayGrouping(const Calendar& calendar, std::vector<TimelineDay>& into)
        : calendar(calendar), days(into) {}

    void add(const Shared<Event>& event) {
        const Date time = event->timestamp;
        if (days.empty() || !(time >= days.back().id && time < end)) {
            const Date start = calendar.startOfDay(time);
            end = calendar.startOfNextDay(time);
            if (days.empty() || days.back().id != start)
                days.push_back({start, {}});
        }
        days.back().events.push_back(event);
    }

private:
    const Calendar& calendar;
    std::vector<TimelineDay>& days;
    Date end;
};

} // namespace

std::vector<Shared<Event>> TimelinePresentation::newestFirst(std::vector<Shared<Event>> events) {
    std::ranges::stable_sort(events, isBefore);
    return events;
}

std::vector<Shared<Event>> TimelinePresentation::matching(const std::vector<Shared<Event>>& from,
                                                          Date after, Date through,
                                                          std::string_view search) {
    EventFilter filter(after, through, search);
    std::vector<Shared<Event>> events;
    std::ranges::copy_if(from, std::back_inserter(events),
                         [&](const Shared<Event>& event) { return filter.passes(*event); });
    return events;
}

TimelinePresentation
TimelinePresentation::build(const std::vector<Shared<Event>>& from, Date after, Date through,
                            std::optional<EventCategory> category,
                            const std::optional<std::set<EventCategory>>& categories,
                            std::string_view search, const Calendar& calendar) {
    const auto passes = [&](EventCategory candidate) {
        return categories ? categories->contains(candidate) : !category || *category == candidate;
    };
    TimelinePresentation presentation;
    DayGrouping grouping(calendar, presentation.days);
    EventFilter filter(after, through, search);
    for (const Shared<Event>& event : from) {
        if (!filter.passes(*event))
            continue;
        ++(presentation.*counts[static_cast<std::size_t>(event->category)]);
        if (!passes(event->category))
            continue;
        presentation.events.push_back(event);
        grouping.add(event);
    }
    return presentation;
}

} // namespace tidemark
