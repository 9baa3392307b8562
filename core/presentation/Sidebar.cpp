#include "core/presentation/Sidebar.h"

#include "core/base/Text.h"
#include "core/presentation/SystemWords.h"

#include <algorithm>

namespace tidemark {

namespace {

using systemWords::shown;
using RowKind = SidebarRow::Kind;

const char* unitOf(WorkspaceDestination place, bool isOne) {
    switch (place) {
    case WorkspaceDestination::files:
        return isOne ? "file" : "files";
    case WorkspaceDestination::downloads:
        return isOne ? "download" : "downloads";
    case WorkspaceDestination::clipboard:
        return isOne ? "clip" : "clips";
    default:
        return isOne ? "event" : "events";
    }
}

SidebarRow named(RowKind kind, std::string label) {
    SidebarRow row;
    row.kind = kind;
    row.accessibleText = label;
    row.label = std::move(label);
    return row;
}

SidebarRow rowOf(WorkspaceDestination place, const SidebarState& state) {
    const auto& known = facts(place);
    SidebarRow row = named(RowKind::place, shown(known.label));
    row.place = place;
    row.symbol = known.symbol;
    row.isSelected = !state.openSnapshot && state.workspace == place;
    row.isFilter = state.systemFilters.contains(place);
    if (known.isSystemFilter)
        row.filterToggle = "Toggle " + row.label + " in the timeline filter";
    if (const auto found = state.counts.find(place); found != state.counts.end()) {
        row.count = found->second;
        row.accessibleText +=
            ", " + std::to_string(found->second) + " " + unitOf(place, found->second == 1);
    }
    if (row.isFilter)
        row.accessibleText += ", in the timeline filter";
    return row;
}

SidebarRow rowOf(const Baseline& snapshot, const SidebarState& state, const Calendar& calendar) {
    SidebarRow row = named(RowKind::snapshot, oneLine(snapshot.name));
    row.detail = calendar.format(snapshot.snapshot->timestamp, "d MMM yyyy, HH:mm");
    row.day = calendar.format(snapshot.snapshot->timestamp, "d MMM");
    row.symbol = facts(WorkspaceDestination::snapshots).symbol;
    row.snapshot = snapshot.id;
    row.isSelected = state.openSnapshot == snapshot.id;
    row.accessibleText = "Snapshot " + row.label + ", " + row.detail;
    return row;
}

void addSnapshots(std::vector<SidebarRow>& rows, const SidebarState& state,
                  const std::vector<Baseline>& snapshots, const Calendar& calendar) {
    rows.push_back(named(RowKind::heading, "SNAPSHOTS"));
    std::vector<const Baseline*> sorted;
    for (const Baseline& snapshot : snapshots)
        sorted.push_back(&snapshot);
    std::ranges::stable_sort(sorted, std::ranges::greater(),
                             [](const Baseline* each) { return each->snapshot->timestamp; });
    for (const Baseline* snapshot : sorted)
        rows.push_back(rowOf(*snapshot, state, calendar));
    if (snapshots.empty() && state.isLoaded)
        rows.push_back(named(RowKind::note, "No saved snapshots"));
    SidebarRow save = named(RowKind::saveSnapshot, "Save snapshot");
    save.symbol = "plus";
    save.isEnabled = state.canSave;
    save.help = "Save a new snapshot";
    rows.push_back(std::move(save));
}

} // namespace

std::vector<SidebarRow> sidebarRows(const SidebarState& state,
                                    const std::vector<Baseline>& snapshots,
                                    const Calendar& calendar) {
    std::vector<SidebarRow> rows;
    for (const auto& group : destinationGroups()) {
        rows.push_back(named(RowKind::heading, shown(group.title)));
        for (const auto place : group.destinations)
            rows.push_back(rowOf(place, state));
    }
    addSnapshots(rows, state, snapshots, calendar);
    return rows;
}

} // namespace tidemark
