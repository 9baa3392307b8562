#include "core/presentation/SnapshotBar.h"

#include "core/base/Text.h"
#include "core/presentation/WorkspaceText.h"

namespace tidemark {

namespace {

std::string dateOf(const Snapshot& snapshot, const Calendar& calendar) {
    return calendar.format(snapshot.timestamp, "d MMM yyyy, HH:mm");
}

std::string noteOf(const OpenSnapshot& open, const Calendar& calendar) {
    if (open.isComparing)
        return std::string(workspaceText::comparing);
    if (open.mode == SnapshotViewMode::timeline)
        return open.isIncomplete ? std::string(workspaceText::incompleteSnapshot) : std::string();
    if (!open.latest)
        return {};
    return dateOf(*open.snapshot.snapshot, calendar) + " → " + dateOf(*open.latest, calendar);
}

} // namespace

SnapshotBar snapshotBar(const OpenSnapshot& open, const Calendar& calendar) {
    SnapshotBar bar;
    bar.title = oneLine(open.snapshot.name) + " · " + dateOf(*open.snapshot.snapshot, calendar);
    for (const auto& [mode, text] : json::rawValues<SnapshotViewMode>)
        bar.modes.push_back({mode, std::string(text), mode == open.mode});
    bar.note = noteOf(open, calendar);
    return bar;
}

SnapshotDeletion SnapshotDeletion::of(const Baseline& snapshot) {
    return {"Delete the snapshot “" + oneLine(snapshot.name) + "”?",
            "The copy that was saved under this name is removed. Your recorded history stays.",
            "Delete Snapshot"};
}

} // namespace tidemark
