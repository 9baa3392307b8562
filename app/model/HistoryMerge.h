#pragma once

#include "app/model/ModelState.h"
#include "core/memory/MemoryEventList.h"
#include "core/presentation/MergedHistory.h"

#include <memory>

namespace tidemark {

/// Merges the events of all sources: captures, installations that the system remembers, the
/// activity of the machine, and the memory history. Main thread only; what it returns may be read
/// by any thread.
class HistoryMerge {
public:
    using Events = std::vector<Shared<Event>>;

    /// Whether the state has another journal or other activity than was merged last.
    bool isStale(const ModelState& state) const;
    /// Merges anew if so.
    void update(const ModelState& state);
    /// Merges what is new in the memory history, and nothing else, and returns it.
    MemoryEventList::Change update(const MemoryArchive& archive);

    const std::shared_ptr<const MergedHistory>& history() const { return merged; }
    /// Grows whenever the history became another.
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
