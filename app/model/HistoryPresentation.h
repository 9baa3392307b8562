#pragma once

#include "core/memory/MemoryEventList.h"
#include "core/presentation/HistoryView.h"

namespace tidemark {

/// What is to be seen of the history, as it was made last.
class HistoryPresentation {
public:
    const HistoryView& view() const { return made; }
    /// Grows whenever the view became another: what was computed for an older number is stale.
    std::uint64_t revision() const { return revisions; }

    /// `place` with what the open snapshot narrows.
    void show(const MergedHistory& history, HistoryPlace place, Date now);
    /// Shows nothing, as long as what is to be seen is not known. The counts stay.
    void showNothing();
    /// Takes over what became another in the memory history, of which `history` has the new form.
    void update(const MergedHistory& history, const MemoryEventList::Change& change, Date now);

private:
    HistoryView made;
    HistoryPlace shownPlace;
    std::uint64_t revisions = 0;
};

} // namespace tidemark
