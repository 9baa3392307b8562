#include "app/model/StateComparisons.h"

#include "app/base/Background.h"
#include "app/model/Log.h"
#include "core/timeline/EventBuilder.h"
#include "core/timeline/TimelinePresentation.h"

#include <iterator>
#include <utility>

namespace tidemark {

namespace {

StateComparisons::Differences differences(const Snapshot& before, const Snapshot& after) {
    std::vector<Event> events = EventBuilder::build(before, after);
    return TimelinePresentation::newestFirst(
        {std::make_move_iterator(events.begin()), std::make_move_iterator(events.end())});
}

} // namespace

StateComparisons::StateComparisons(const TaskScope& tasks, Finished finished)
    : tasks(tasks), finished(std::move(finished)) {}

std::optional<StateComparisons::Differences>
StateComparisons::known(const Baseline& baseline, const Shared<Snapshot>& latest) {
    if (compared.object() != latest.object()) {
        abandon();
        results.clear();
        compared = latest;
    }
    if (const auto found = results.find(baseline.id); found != results.end())
        return found->second;
    if (running != baseline.id) {
        abandon();
        running = baseline.id;
        stopping = std::stop_source();
        tasks.start(compare(baseline, latest, stopping.get_token()));
    }
    return std::nullopt;
}

void StateComparisons::abandon() {
    stopping.request_stop();
    running.reset();
}

QCoro::Task<void> StateComparisons::compare(Baseline baseline, Shared<Snapshot> latest,
                                            std::stop_token stop) {
    const auto hold = tasks.hold();
    const auto build = [before = baseline.snapshot, latest](const std::stop_token&) {
        return differences(*before, *latest);
    };
    std::optional<Differences> result;
    try {
        Differences found = co_await runInBackground(build, stop, WorkPriority::userInitiated);
        result = std::move(found);
    } catch (const std::exception& error) {
        qCCritical(capturesLog, "The comparison failed: %s", error.what());
    }
    if (stop.stop_requested() || tasks.isStopping())
        co_return;
    running.reset();
    if (result)
        results[baseline.id] = *result;
    finished(std::move(result));
}

} // namespace tidemark
