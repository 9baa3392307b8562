#include "recorder/Commands.h"
#include "recorder/InspectionText.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct ShowOptions {
    std::string id;
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{
            Option{"id",
                   &ShowOptions::id,
                   "The identifier of an event (timeline --ids), or a part of it that is unique",
                   {.isPositional = true, .isRequired = true}},
            Option{"json", &ShowOptions::json, "Print stored JSON instead of text"}};
    }
};

/// The event with the identifier `id`, or the only one whose identifier contains `id`. Throws
/// `Error` when there is none or more than one.
const Event& eventWith(const std::vector<Shared<Event>>& events, const std::string& id) {
    std::vector<const Event*> found;
    for (const auto& event : events) {
        if (event->id == id)
            return *event;
        if (!id.empty() && event->id.contains(id))
            found.push_back(&*event);
    }
    if (found.empty())
        throw Error("No event has the identifier \"" + id + "\".");
    if (found.size() > 1)
        throw Error(std::to_string(found.size()) + " events have \"" + id
                    + "\" in their identifiers; give more of it.");
    return *found.front();
}

std::string show(const HistoryReading& reading, const ShowOptions& options) {
    const auto merged = reading.history.merged();
    const Event& event = eventWith(merged.events, options.id);
    if (options.json)
        return json::encoded(event) + "\n";
    const auto& snapshots = reading.history.journal.snapshots;
    const Snapshot* latest = snapshots.empty() ? nullptr : &*snapshots.back();
    return textOf(EventInspection::of(event, latest, false), reading.colour);
}

} // namespace

Command commands::show() {
    return makeCommand<ShowOptions, &tidemark::show>({
        .name = "show",
        .group = CommandGroup::history,
        .summary = "Show all that is known of one event",
    });
}

} // namespace tidemark
