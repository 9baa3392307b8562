#pragma once

#include "app/base/TaskScope.h"
#include "core/records/Event.h"
#include "core/records/Snapshot.h"

#include <functional>
#include <map>
#include <optional>
#include <stop_token>
#include <vector>

namespace tidemark {

/// Compares the states of named snapshots with the latest one, in the background, one at a time. A
/// result is kept until there is another latest state. Main thread only.
class StateComparisons {
public:
    /// Newest first.
    using Differences = std::vector<Shared<Event>>;
    /// Absent when the comparison failed.
    using Finished = std::function<void(std::optional<Differences>)>;

    /// `tasks` outlive this; `finished` is called at the end of each comparison that was not
    /// abandoned.
    StateComparisons(const TaskScope& tasks, Finished finished);

    /// The differences as far as they are known; otherwise their comparison begins, if it does not
    /// run already.
    std::optional<Differences> known(const Baseline& baseline, const Shared<Snapshot>& latest);
    bool isRunning() const { return running.has_value(); }
    /// Gives up the one that runs.
    void abandon();

private:
    QCoro::Task<void> compare(Baseline baseline, Shared<Snapshot> latest, std::stop_token stop);

    const TaskScope& tasks;
    const Finished finished;
    OptionalShared<Snapshot> compared;
    std::map<Uuid, Differences> results;
    std::optional<Uuid> running;
    std::stop_source stopping{std::nostopstate};
};

} // namespace tidemark
