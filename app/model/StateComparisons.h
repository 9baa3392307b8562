#pragma once

#include "app/base/TaskScope.h"
#include "core/records/Event.h"
#include "core/records/Snapshot.h"

#include <functional>
#include <optional>
#include <stop_token>
#include <vector>

namespace tidemark {

/// Compares snapshots in the background, one pair at a time, and keeps the latest results. Main
/// thread only.
class StateComparisons {
public:
    /// Newest first.
    using Differences = std::vector<Shared<Event>>;
    /// Receives the differences; absent when the comparison failed.
    using Finished = std::function<void(std::optional<Differences>)>;

    /// `tasks` must outlive this object. `finished` is called at the end of each comparison that
    /// was not abandoned.
    StateComparisons(const TaskScope& tasks, Finished finished);

    /// The differences from `before` to `after`, if they are known; otherwise starts their
    /// comparison, unless it is running. Either way the comparison of another pair is dropped.
    std::optional<Differences> known(const Shared<Snapshot>& before, const Shared<Snapshot>& after);
    bool isRunning() const { return running.has_value(); }
    /// Drops a running comparison.
    void abandon();

private:
    struct Pair {
        Shared<Snapshot> before;
        Shared<Snapshot> after;

        bool isOf(const Pair& other) const {
            return before.sameObject(other.before) && after.sameObject(other.after);
        }
    };
    struct Result {
        Pair pair;
        Differences differences;
    };
    static constexpr std::size_t resultLimit = 8;

    QCoro::Task<void> compare(Pair pair, std::stop_token stop);
    void keep(Result result);

    const TaskScope& tasks;
    const Finished finished;
    /// The oldest first.
    std::vector<Result> results;
    std::optional<Pair> running;
    std::stop_source stopping{std::nostopstate};
};

} // namespace tidemark
