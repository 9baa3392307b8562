#include "app/model/StateComparisons.h"

#include "app/base/Background.h"
#include "app/model/Log.h"
#include "core/growth/Moment.h"

#include <algorithm>
#include <utility>

namespace tidemark {

StateComparisons::StateComparisons(const TaskScope& tasks, Finished finished)
    : tasks(tasks), finished(std::move(finished)) {}

std::optional<StateComparisons::Differences>
StateComparisons::known(const Shared<Snapshot>& before, const Shared<Snapshot>& after) {
    const Pair pair{before, after};
    const auto isOfPair = [&](const Result& result) { return result.pair.isOf(pair); };
    if (const auto found = std::ranges::find_if(results, isOfPair); found != results.end()) {
        abandon();
        return found->differences;
    }
    if (!running || !running->isOf(pair)) {
        abandon();
        running = pair;
        stopping = std::stop_source();
        tasks.start(compare(pair, stopping.get_token()));
    }
    return std::nullopt;
}

void StateComparisons::abandon() {
    stopping.request_stop();
    running.reset();
}

void StateComparisons::keep(Result result) {
    if (results.size() == resultLimit)
        results.erase(results.begin());
    results.push_back(std::move(result));
}

QCoro::Task<void> StateComparisons::compare(Pair pair, std::stop_token stop) {
    const auto hold = tasks.hold();
    const auto build = [pair](const std::stop_token&) {
        return differencesOf({{pair.before}, {pair.after}});
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
        keep({pair, *result});
    finished(std::move(result));
}

} // namespace tidemark
