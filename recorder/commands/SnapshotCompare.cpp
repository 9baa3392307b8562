#include "core/presentation/HistoryView.h"
#include "core/timeline/EventBuilder.h"
#include "recorder/Commands.h"
#include "recorder/HistoryTime.h"
#include "recorder/NamedSnapshot.h"
#include "recorder/TimelinePrinter.h"
#include "recorder/TypedInvocation.h"

#include <iterator>

namespace tidemark {

namespace {

struct SnapshotCompareOptions {
    std::string name;
    /// Prints the events recorded since the named snapshot instead of the differences between it
    /// and the last capture.
    bool timeline = false;
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{
            Option{"name",
                   &SnapshotCompareOptions::name,
                   namedSnapshotHelp,
                   {.isPositional = true, .isRequired = true}},
            Option{"timeline", &SnapshotCompareOptions::timeline,
                   "Show the events recorded since the snapshot instead of the differences"},
            Option{"json", &SnapshotCompareOptions::json, "Print stored JSON instead of text"}};
    }
};

std::vector<Shared<Event>> differences(const Snapshot& before, const Snapshot& now) {
    auto built = EventBuilder::build(before, now);
    return TimelinePresentation::newestFirst(
        {std::make_move_iterator(built.begin()), std::make_move_iterator(built.end())});
}

std::vector<Shared<Event>> recordedSince(const HistoryReading& reading, Date since) {
    HistoryPlace place;
    place.window = HistoryTimeWindow::all;
    place.since = since;
    place.isInSnapshot = true;
    return presentHistory(reading.history.merged(), place, reading.now, Calendar())
        .presentation.events;
}

std::string snapshotCompare(const HistoryReading& reading, const SnapshotCompareOptions& options) {
    const Journal& journal = reading.history.journal;
    const auto before = namedSnapshot(journal, options.name).snapshot;
    if (!options.timeline && journal.snapshots.empty())
        throw Error("There is no capture to compare it with.");
    const auto events = options.timeline ? recordedSince(reading, before->timestamp)
                                         : differences(*before, *journal.snapshots.back());
    if (options.json)
        return json::encoded(events) + "\n";
    const Calendar calendar;
    std::string out = (options.timeline ? "Recorded since " : "Different from ")
                      + historyTime::moment(before->timestamp, "", calendar) + ":\n";
    if (options.timeline && journal.mayLackEventsSince(before->timestamp))
        out += "Older events were removed, so this may be incomplete.\n";
    return out + "\n"
           + (events.empty() ? "Nothing.\n"
                             : TimelinePrinter(calendar, reading.colour).text(events));
}

} // namespace

Command commands::snapshotCompare() {
    return makeCommand<SnapshotCompareOptions, &tidemark::snapshotCompare>({
        .name = "snapshot compare",
        .group = CommandGroup::history,
        .summary = "Show the differences between a named snapshot and the last capture",
    });
}

} // namespace tidemark
