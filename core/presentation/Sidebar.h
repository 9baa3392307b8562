#pragma once

#include "core/base/Calendar.h"
#include "core/base/Uuid.h"
#include "core/presentation/WorkspaceDestination.h"
#include "core/records/Snapshot.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tidemark {

/// One row of the sidebar.
struct SidebarRow {
    enum class Kind { heading, place, snapshot, note, saveSnapshot };

    Kind kind = Kind::heading;
    std::string label;
    /// The second line of a snapshot: when it was taken. Empty for other rows.
    std::string detail{};
    /// The day and month of a snapshot.
    std::string day{};
    /// Name of the symbol image; empty for a row without one.
    std::string symbol{};
    /// The number of events in the place; absent when they are not counted.
    std::optional<std::size_t> count{};
    std::optional<WorkspaceDestination> place{};
    std::optional<Uuid> snapshot{};
    /// True when the list shows this place or snapshot.
    bool isSelected = false;
    /// True when the place is a filter of the timeline.
    bool isFilter = false;
    /// The label of the button that adds the place to the filters of the timeline or removes it;
    /// empty for a row without that button.
    std::string filterToggle{};
    /// False for a command that is not possible at present.
    bool isEnabled = true;
    /// The tool tip; may be empty.
    std::string help{};
    /// The text for a screen reader.
    std::string accessibleText{};

    bool operator==(const SidebarRow&) const = default;
};

/// The state from which the sidebar is made.
struct SidebarState {
    WorkspaceDestination workspace = WorkspaceDestination::timeline;
    std::set<WorkspaceDestination> systemFilters{};
    std::optional<Uuid> openSnapshot{};
    std::map<WorkspaceDestination, std::size_t> counts{};
    /// False until the history has been read: whether there are snapshots is unknown then.
    bool isLoaded = true;
    /// False while no snapshot can be saved.
    bool canSave = true;
};

/// The places under their headings, then the saved snapshots, latest first.
std::vector<SidebarRow> sidebarRows(const SidebarState& state,
                                    const std::vector<Baseline>& snapshots,
                                    const Calendar& calendar);

} // namespace tidemark
