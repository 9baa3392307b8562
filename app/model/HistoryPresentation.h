#pragma once

#include "core/memory/MemoryEventList.h"
#include "core/presentation/HistoryView.h"

namespace tidemark {

/// The presented part of the history, kept until it is updated.
class HistoryPresentation {
public:
    const HistoryView& view() const { return made; }
    /// Incremented with every change of the view: results computed for an older number are stale.
    std::uint64_t revision() const { return revisions; }

    /// Shows the history at `place`, which includes the restrictions of the open snapshot.
    void show(const MergedHistory& history, HistoryPlace place, Date now);
    /// Shows no events, while they are not known yet. The counts stay.
    void showNothing();
    /// Updates the view after a change of the memory history, which `history` already includes.
    void update(const MergedHistory& history, const MemoryEventList::Change& change, Date now);

private:
    HistoryView made;
    HistoryPlace shownPlace;
    std::uint64_t revisions = 0;
};

} // namespace tidemark
