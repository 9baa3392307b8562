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
    /// The second line: of a snapshot, when it was taken.
    std::string detail{};
    /// Name of the symbol image; empty for a row without one.
    std::string symbol{};
    /// What the place would hold; absent where that isn't counted.
    std::optional<std::size_t> count{};
    std::optional<WorkspaceDestination> place{};
    std::optional<Uuid> snapshot{};
    /// It is what the list shows.
    bool isSelected = false;
    /// The place narrows the timeline now, alone or with others.
    bool isFilter = false;
    /// What the button says that adds the place to the filters of the timeline, or takes it out;
    /// empty for a row without it.
    std::string filterToggle{};
    /// The tool tip; may be empty.
    std::string help{};
    /// What a screen reader says.
    std::string accessibleText{};

    bool operator==(const SidebarRow&) const = default;
};

/// What the sidebar is made of.
struct SidebarState {
    WorkspaceDestination workspace = WorkspaceDestination::timeline;
    std::set<WorkspaceDestination> systemFilters{};
    std::optional<Uuid> openSnapshot{};
    std::map<WorkspaceDestination, std::size_t> counts{};
};

/// The places under their headings, then the saved snapshots, latest first.
std::vector<SidebarRow> sidebarRows(const SidebarState& state,
                                    const std::vector<Baseline>& snapshots,
                                    const Calendar& calendar);

} // namespace tidemark
