#include "core/presentation/Sidebar.h"

#include "tests/support/Observations.h"

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

Baseline savedAs(const std::string& name, unsigned number) {
    return Baseline::named(name, Shared(test::snapshot(number)));
}

/// The rows that can be chosen, as a screen reader says them; what is selected in brackets.
std::string spoken(const std::vector<SidebarRow>& rows) {
    std::string text;
    for (const auto& row : rows)
        if (row.place || row.snapshot)
            text += row.isSelected ? "[" + row.accessibleText + "]\n" : row.accessibleText + "\n";
    return text;
}

} // namespace

TEST(Sidebar, DescribesItsRowsForAScreenReader) {
    using enum WorkspaceDestination;
    SidebarState state;
    state.workspace = storage;
    state.systemFilters = {storage, network};
    state.counts = {{storage, 12}, {network, 1}, {clipboard, 2}};
    const std::vector saved{savedAs("Old\nname", 1), savedAs("New", 2)};
    const Calendar calendar("UTC");
    const std::string open = spoken(sidebarRows(state, saved, calendar));
    EXPECT_NE(open.find("[Storage, 12 events, in the timeline filter]\n"), std::string::npos);
    EXPECT_NE(open.find("Networking, 1 event, in the timeline filter\n"), std::string::npos);
    EXPECT_NE(open.find("Folder Sizes\nStorage Over Time\n"), std::string::npos);
    EXPECT_TRUE(open.ends_with("Clipboard, 2 clips\n"
                               "Snapshot New, 1 Jan 2001, 00:02\n"
                               "Snapshot Old\uFFFDname, 1 Jan 2001, 00:01\n"))
        << open;

    state.workspace = snapshots;
    state.openSnapshot = saved.front().id;
    const std::string snapshot = spoken(sidebarRows(state, saved, calendar));
    EXPECT_NE(snapshot.find("[Snapshot Old"), std::string::npos);
    EXPECT_EQ(snapshot.find("[Storage"), std::string::npos);
}

TEST(Sidebar, OffersAFilterOnlyForSystemPlaces) {
    for (const auto& row : sidebarRows({}, {}, Calendar("UTC"))) {
        EXPECT_EQ(!row.filterToggle.empty(), row.place && facts(*row.place).isSystemFilter)
            << row.label;
        EXPECT_NE(row.kind, SidebarRow::Kind::snapshot);
    }
}
