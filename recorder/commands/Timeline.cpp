#include "core/presentation/HistoryView.h"
#include "core/presentation/SystemWords.h"
#include "recorder/Commands.h"
#include "recorder/EventAnswer.h"
#include "recorder/HistoryFilter.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct TimelineOptions : HistoryFilter {
    std::optional<std::int64_t> limit;
    bool counts = false;
    bool ids = false;
    bool json = false;

    static void checkLimit(const std::optional<std::int64_t>& limit) {
        if (limit && (*limit < 0 || *limit > 1'000'000))
            throw UsageError("the number must be from 0 to 1000000");
    }

    static constexpr auto fields() {
        return std::tuple_cat(
            HistoryFilter::fields(),
            std::tuple{
                Option{
                    "limit", &TimelineOptions::limit, "The most events to show", {}, &checkLimit},
                Option{"counts", &TimelineOptions::counts,
                       "Show the number of events at each place instead"},
                Option{"ids", &TimelineOptions::ids, eventIDsHelp},
                Option{"json", &TimelineOptions::json, "Print stored JSON instead of text"}});
    }
};

/// The counts by the names of the places.
std::string countsJson(const HistoryView& view) {
    std::map<std::string, std::int64_t> counts;
    for (const auto& [place, count] : view.sidebarCounts)
        counts.emplace(rawValue(place), static_cast<std::int64_t>(count));
    return json::encoded(counts) + "\n";
}

std::string countsText(const HistoryView& view) {
    std::string out;
    for (const auto& group : destinationGroups()) {
        out += std::string(out.empty() ? "" : "\n") + systemWords::shown(group.title) + "\n";
        for (const auto place : group.destinations)
            if (const auto count = view.sidebarCounts.find(place);
                count != view.sidebarCounts.end()) {
                const std::string label = systemWords::shown(facts(place).label);
                out += "  " + label + std::string(18 - label.size(), ' ')
                       + std::to_string(count->second) + "\n";
            }
    }
    return out;
}

std::string timeline(const HistoryReading& reading, const TimelineOptions& options) {
    HistoryView view = filtered(reading, options);
    if (options.counts)
        return options.json ? countsJson(view) : countsText(view);
    auto& events = view.presentation.events;
    if (options.limit && static_cast<std::int64_t>(events.size()) > *options.limit)
        events.erase(events.begin() + *options.limit, events.end());
    const bool isNarrowed = !reading.history.merged().events.empty();
    return eventAnswer(events, reading, {options.json, options.ids},
                       isNarrowed ? "The filters leave no event to show.\n"
                                  : "No changes have been recorded.\n");
}

} // namespace

Command commands::timeline() {
    return makeCommand<TimelineOptions, &tidemark::timeline>({
        .name = "timeline",
        .group = CommandGroup::history,
        .summary = "Show the recorded history",
    });
}

} // namespace tidemark
