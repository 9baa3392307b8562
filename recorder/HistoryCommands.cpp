#include "recorder/HistoryCommands.h"

#include "core/base/Error.h"
#include "core/base/JsonEncoder.h"
#include "core/base/Text.h"
#include "core/presentation/HistoryMatches.h"
#include "recorder/CoverageText.h"
#include "recorder/HistoryTime.h"
#include "recorder/SnapshotReading.h"
#include "recorder/TimelinePrinter.h"

#include <algorithm>
#include <array>

namespace tidemark::historyCommands {

namespace {

using Name = RecorderArguments::Command;

/// Where the arguments place the user.
HistoryPlace placeOf(const Reading& reading) {
    const auto& view = reading.arguments.view;
    HistoryPlace place;
    place.window = HistoryTimeWindow::all;
    if (const auto window = json::fromRawValue<HistoryTimeWindow>(view.window))
        place.window = *window;
    if (const auto days = historyTime::days(view.window)) {
        place.window = HistoryTimeWindow::custom;
        place.customWindowDays = *days;
    }
    if (!view.since.empty())
        place.windowStart = historyTime::since(view.since, reading.now);
    place.workspace = view.place;
    place.categoryFilters = view.categories;
    place.search = view.search;
    return place;
}

/// Files, downloads and clips have places of their own and stand in no timeline.
bool isOfMemory(const HistoryPlace& place) {
    const auto category = facts(place.workspace).category;
    return (category && !appearsInTimeline(*category))
           || !std::ranges::all_of(place.categoryFilters, appearsInTimeline);
}

HistoryView viewOf(const Reading& reading) {
    MergedHistory history = reading.history.merged();
    HistoryPlace place = placeOf(reading);
    if (isOfMemory(place)) {
        history.timeline = history.events;
        if (place.workspace == WorkspaceDestination::timeline)
            place.workspace = WorkspaceDestination::snapshots;
    }
    return presentHistory(history, place, reading.now, Calendar());
}

/// One count a place, under the name that commands know it by.
std::string countsJson(const HistoryView& view) {
    std::map<std::string, std::int64_t> counts;
    for (const auto& [place, count] : view.sidebarCounts)
        counts.emplace(rawValue(place), static_cast<std::int64_t>(count));
    return json::encoded(counts) + "\n";
}

std::string countsText(const HistoryView& view) {
    std::string out;
    for (const auto& group : destinationGroups()) {
        out += std::string(out.empty() ? "" : "\n") + std::string(group.title) + "\n";
        for (const auto place : group.destinations)
            if (const auto count = view.sidebarCounts.find(place);
                count != view.sidebarCounts.end()) {
                const auto label = facts(place).label;
                out += "  " + std::string(label) + std::string(18 - label.size(), ' ')
                       + std::to_string(count->second) + "\n";
            }
    }
    return out;
}

std::string shown(const std::vector<Shared<Event>>& events, const Reading& reading,
                  const char* nothing) {
    if (reading.arguments.json)
        return json::encoded(events) + "\n";
    return events.empty() ? nothing : TimelinePrinter(Calendar(), reading.colour).text(events);
}

std::string timeline(const Reading& reading) {
    HistoryView view = viewOf(reading);
    if (reading.arguments.counts)
        return reading.arguments.json ? countsJson(view) : countsText(view);
    auto& events = view.presentation.events;
    if (const auto limit = reading.arguments.limit; limit && events.size() > *limit)
        events.erase(events.begin() + static_cast<std::ptrdiff_t>(*limit), events.end());
    const bool isNarrowed = !reading.history.merged().events.empty();
    return shown(events, reading,
                 isNarrowed ? "Nothing of what was recorded is shown.\n"
                            : "No changes have been recorded.\n");
}

std::string search(const Reading& reading) {
    const auto merged = reading.history.merged();
    return shown(HistoryMatches::find(merged.events, reading.arguments.view.search, reading.stop),
                 reading, "Nothing was found.\n");
}

std::string coverage(const Reading& reading) {
    return coverageText(reading.history.journal,
                        historyTime::since(reading.arguments.view.since, reading.now), reading.now);
}

/// A file that can't be read is not an empty one.
void requireReadable(const std::optional<std::string>& problem) {
    if (problem)
        throw Error(*problem);
}

std::string activity(const Reading& reading) {
    requireReadable(reading.history.activityProblem);
    if (reading.arguments.json)
        return json::encoded(reading.history.activity) + "\n";
    std::string out;
    const Calendar calendar;
    for (auto record = reading.history.activity.rbegin(); record != reading.history.activity.rend();
         ++record)
        out += historyTime::moment(record->timestamp, "", calendar) + "  "
               + oneLine(record->title()) + "  " + oneLine(record->detailSubtitle()) + "\n";
    return out.empty() ? "No activity has been recorded.\n" : out;
}

std::string memory(const Reading& reading) {
    requireReadable(reading.history.memoryProblem);
    const auto& records = reading.history.memory.records;
    if (reading.arguments.json)
        return json::encoded(records) + "\n";
    std::string out;
    const Calendar calendar;
    for (const auto& record : records)
        out += historyTime::moment(record->timestamp, "", calendar) + "  " + oneLine(record->title)
               + "  " + oneLine(record->subtitle()) + "\n";
    return out.empty() ? "Nothing has been remembered.\n" : out;
}

std::string exported(const Reading& reading) {
    auto events = viewOf(reading).presentation.events;
    if (events.empty())
        throw Error("There is nothing to export.");
    const HistoryExport report{std::move(events), "Timeline", reading.now};
    return report.data(reading.arguments.format, reading.arguments.includePrivate);
}

struct Row {
    Name name;
    Command command;
};

constexpr auto rows = std::to_array<Row>({
    {Name::timeline, timeline},
    {Name::search, search},
    {Name::coverage, coverage},
    {Name::activity, activity},
    {Name::memory, memory},
    {Name::exportHistory, exported},
    {Name::listSnapshots, snapshotReading::list},
    {Name::showSnapshot, snapshotReading::show},
    {Name::compareSnapshot, snapshotReading::compare},
});

} // namespace

Command find(Name name) {
    const auto* row = std::ranges::find(rows, name, &Row::name);
    return row == rows.end() ? nullptr : row->command;
}

} // namespace tidemark::historyCommands
