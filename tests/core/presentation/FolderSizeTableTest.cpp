#include "core/presentation/FolderSizeTable.h"

#include "tests/support/Observations.h"
#include "tests/support/SharedRecords.h"

#include <gtest/gtest.h>

using namespace tidemark;
using Table = FolderSizeTable;

namespace {

/// The rows as "name before | after | change".
std::string textOf(const std::vector<FolderInspectionRow>& rows) {
    std::string text;
    for (const auto& row : rows) {
        const auto cells = cellsOf(row, Calendar("UTC"));
        text += cells.name + " " + cells.before + " | " + cells.after + " | " + cells.change + "\n";
    }
    return text;
}

Snapshot measured(unsigned number, std::vector<FolderSize> folders) {
    Snapshot snapshot = test::snapshot(number);
    snapshot.folders = test::shared(std::move(folders));
    return snapshot;
}

} // namespace

TEST(FolderSizeTable, MarksWhatIsUnknownOrPartial) {
    const Snapshot before = measured(1, {test::folder("/a", 1'000'000'000), test::folder("/b", 5)});
    Snapshot after = measured(2, {test::folder("/a", 3'000'000'000), test::folder("/b", 5)});
    auto& partial = after.folderStorage.emplace().emplace_back();
    partial.path = "/c";
    partial.name = "c";
    partial.directFileBytes = 2'000'000;
    StorageMeasurementRecord unmeasured;
    unmeasured.item.emplace(StorageMeasurementItem::directory("/c/d", {}));
    partial.children.records = test::shared(std::move(unmeasured));
    const auto rows = folderSizesOf(&before, after);
    EXPECT_EQ(textOf(rows), "a 1 GB | 3 GB | +2 GB\n"
                            "b 5 bytes | 5 bytes | No change\n"
                            "c — | ≥ 2 MB | —\n");
    EXPECT_EQ(textOf(childrenOf(rows.back())), "Files in folder — | 2 MB | —\nd — | — | —\n");
    const auto cells = cellsOf(rows.back(), Calendar("UTC"));
    EXPECT_EQ(cells.accessibleText, "c, at least 2 MB, before unknown size");
    EXPECT_TRUE(cells.help.ends_with("\nSome child folders have no completed measurement."));
    EXPECT_EQ(cellsOf(rows.front(), Calendar("UTC")).noChildren,
              "Subfolder sizes not recorded yet.");
    EXPECT_EQ(textOf(folderSizesOf(nullptr, after)), "a — | 3 GB | —\nb — | 5 bytes | —\n"
                                                     "c — | ≥ 2 MB | —\n");
}

TEST(FolderSizeTable, SortsUnknownSizesLastInBothDirections) {
    const Snapshot before = measured(1, {test::folder("/b10", 7), test::folder("/b9", 9)});
    const Snapshot after =
        measured(2, {test::folder("/a", 4), test::folder("/b10", 8), test::folder("/b9", 1)});
    const struct {
        Table::Column column;
        bool ascending;
        const char* names;
    } cases[] = {
        {Table::Column::before, true, "b10 b9 a "}, {Table::Column::before, false, "b9 b10 a "},
        {Table::Column::change, true, "b9 b10 a "}, {Table::Column::after, true, "b9 a b10 "},
        {Table::Column::folder, true, "a b9 b10 "}, {Table::Column::folder, false, "b10 b9 a "},
    };
    for (const auto& [column, ascending, names] : cases) {
        auto rows = folderSizesOf(&before, after);
        sortRows(rows, column, ascending);
        std::string text;
        for (const auto& row : rows)
            text += row.name + " ";
        EXPECT_EQ(text, names);
    }
}
