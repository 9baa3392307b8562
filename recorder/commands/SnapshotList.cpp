#include "core/base/Text.h"
#include "recorder/Commands.h"
#include "recorder/HistoryTime.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct SnapshotListOptions {
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{Option{"json", &SnapshotListOptions::json, "Print JSON instead of text"}};
    }
};

/// A named snapshot without its contents.
struct SnapshotEntry {
    Uuid id;
    std::string name;
    Date timestamp;

    static constexpr auto fields() {
        return std::tuple{
            Field{"id", &SnapshotEntry::id, Internal},
            Field{"name", &SnapshotEntry::name, Private},
            Field{"timestamp", &SnapshotEntry::timestamp},
        };
    }
};

std::string snapshotList(const HistoryReading& reading, const SnapshotListOptions& options) {
    const auto& baselines = reading.history.journal.baselines;
    if (options.json) {
        std::vector<SnapshotEntry> entries;
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

} // namespace

Command commands::snapshotList() {
    return makeCommand<SnapshotListOptions, &tidemark::snapshotList>({
        .name = "snapshot list",
        .group = CommandGroup::history,
        .summary = "List the named snapshots",
        .family = "Keep the present state under a name, and compare",
    });
}

} // namespace tidemark
