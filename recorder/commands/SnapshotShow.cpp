#include "recorder/Commands.h"
#include "recorder/NamedSnapshot.h"
#include "recorder/ObservationSummary.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct SnapshotShowOptions {
    std::string name;
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{
            Option{"name",
                   &SnapshotShowOptions::name,
                   namedSnapshotHelp,
                   {.isPositional = true, .isRequired = true}},
            Option{"json", &SnapshotShowOptions::json, "Print stored JSON instead of text"}};
    }
};

std::string snapshotShow(const HistoryReading& reading, const SnapshotShowOptions& options) {
    const Baseline baseline = namedSnapshot(reading.history.journal, options.name);
    return options.json ? json::encoded(baseline) + "\n" : observationSummary(*baseline.snapshot);
}

} // namespace

Command commands::snapshotShow() {
    return makeCommand<SnapshotShowOptions, &tidemark::snapshotShow>({
        .name = "snapshot show",
        .group = CommandGroup::history,
        .summary = "Show the contents of a named snapshot",
    });
}

} // namespace tidemark
