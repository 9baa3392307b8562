#pragma once

#include "app/model/ModelState.h"
#include "core/memory/MemoryEventList.h"
#include "core/presentation/MergedHistory.h"

#include <memory>

namespace tidemark {

/// Merges the events of all sources: captures, imported installations, live activity and the memory
/// history. Main thread only; the merged history may be read on any thread.
class HistoryMerge {
public:
    using Events = std::vector<Shared<Event>>;

    /// Whether the journal or the activity in the state has changed since the last merge.
    bool isStale(const ModelState& state) const;
    /// Merges again if `isStale`.
    void update(const ModelState& state);
    /// Merges only the changes of the memory history, and returns them.
    MemoryEventList::Change update(const MemoryArchive& archive);

    const std::shared_ptr<const MergedHistory>& history() const { return merged; }
    /// Incremented with every change of the merged history.
    std::uint64_t revision() const { return merges; }

private:
    void set(MergedHistory history);

    Events journalEvents;
    std::uint64_t journalRevision = 0;
    Events activityEvents;
    std::uint64_t activityRevision = 0;
    MemoryEventList memory;
    std::shared_ptr<const MergedHistory> merged = std::make_shared<const MergedHistory>();
    std::uint64_t merges = 0;
};

} // namespace tidemark
