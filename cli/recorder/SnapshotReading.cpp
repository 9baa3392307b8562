#include "cli/recorder/SnapshotReading.h"

#include "cli/ObservationSummary.h"
#include "cli/TimelinePrinter.h"
#include "cli/recorder/HistoryTime.h"
#include "core/base/Error.h"
#include "core/base/JsonEncoder.h"
#include "core/base/Text.h"
#include "core/timeline/EventBuilder.h"

#include <algorithm>
#include <iterator>

namespace tidemark::snapshotReading {

namespace {

using historyCommands::Reading;

/// A named snapshot without what it holds.
struct Entry {
    Uuid id;
    std::string name;
    Date timestamp;

    static constexpr auto fields() {
        return std::tuple{
            Field{"id", &Entry::id, Internal},
            Field{"name", &Entry::name, Private},
            Field{"timestamp", &Entry::timestamp},
        };
    }
};

std::vector<Shared<Event>> differences(const Snapshot& before, const Snapshot& now) {
    auto built = EventBuilder::build(before, now);
    return TimelinePresentation::newestFirst(
        {std::make_move_iterator(built.begin()), std::make_move_iterator(built.end())});
}

std::vector<Shared<Event>> recordedSince(const Reading& reading, Date since) {
    HistoryPlace place;
    place.window = HistoryTimeWindow::all;
    place.since = since;
    place.isInSnapshot = true;
    return presentHistory(reading.history.merged(), place, reading.now, Calendar())
        .presentation.events;
}

} // namespace

const Baseline& named(const Journal& journal, const std::string& name) {
    std::vector<const Baseline*> found;
    for (const auto& baseline : journal.baselines) {
        if (baseline.id.text() == name)
            return baseline;
        if (baseline.name == name)
            found.push_back(&baseline);
    }
    if (found.empty())
        throw Error("There is no snapshot \"" + name + "\"; tidemark snapshot list shows them.");
    if (found.size() > 1)
        throw Error("Several snapshots are called \"" + name
                    + "\"; give the identifier that tidemark snapshot list shows.");
    return *found.front();
}

std::string list(const Reading& reading) {
    const auto& baselines = reading.history.journal.baselines;
    if (reading.arguments.json) {
        std::vector<Entry> entries;
        for (const auto& baseline : baselines)
            entries.push_back({baseline.id, baseline.name, baseline.snapshot->timestamp});
        return json::encoded(entries) + "\n";
    }
    const Calendar calendar;
    std::string out;
    for (const auto& baseline : baselines)
        out += historyTime::moment(baseline.snapshot->timestamp, "", calendar) + "  "
               + baseline.id.text() + "  " + oneLine(baseline.name) + "\n";
    return out.empty() ? "No snapshot has been saved.\n" : out;
}

std::string show(const Reading& reading) {
    const Baseline& baseline = named(reading.history.journal, reading.arguments.name);
    return reading.arguments.json ? json::encoded(baseline) + "\n"
                                  : observationSummary(*baseline.snapshot);
}

std::string compare(const Reading& reading) {
    const Journal& journal = reading.history.journal;
    const Baseline& baseline = named(journal, reading.arguments.name);
    const Snapshot& before = *baseline.snapshot;
    if (journal.snapshots.empty())
        throw Error("There is no capture to compare it with.");
    const bool timeline = reading.arguments.sinceSnapshot;
    const auto events = timeline ? recordedSince(reading, before.timestamp)
                                 : differences(before, *journal.snapshots.back());
    if (reading.arguments.json)
        return json::encoded(events) + "\n";
    const Calendar calendar;
    std::string out = (timeline ? "Recorded since " : "Different from ")
                      + historyTime::moment(before.timestamp, "", calendar) + ":\n";
    if (timeline && journal.mayLackEventsSince(before.timestamp))
        out += "Older events were removed, so this may be incomplete.\n";
    return out + "\n"
           + (events.empty() ? "Nothing.\n"
                             : TimelinePrinter(calendar, reading.colour).text(events));
}

} // namespace tidemark::snapshotReading
