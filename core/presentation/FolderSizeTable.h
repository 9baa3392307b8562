#pragma once

#include "core/base/Calendar.h"
#include "core/records/Event.h"
#include "core/storage/FolderInspection.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// The texts, columns and order of the table of folder sizes. Its rows are `FolderInspectionRow`s,
/// whose children are looked up when a row is opened.
struct FolderSizeTable {
    static constexpr std::string_view title = "Folder Sizes";
    static constexpr std::string_view aboutTitle = "About These Sizes";
    static constexpr std::string_view about =
        "Recorded sizes · — unknown · ≥ measured subtotal\n"
        "All changes shown, regardless of timeline thresholds.";
    static constexpr std::string_view noFolders =
        "Add folders in Monitored Folders to record their sizes.";

    enum class Scope { event, allFolders };
    enum class Comparison { latestOnly, previousCapture };
    enum class Column { folder, before, after, change };

    struct Header {
        Column column;
        std::string_view title;

        bool operator==(const Header&) const = default;
    };

    /// How the present measurement of a folder compares with the earlier one.
    enum class Trend { unknown, same, grew, shrank };

    /// One row as it is shown.
    struct Cells {
        std::string name;
        std::string before;
        std::string after;
        std::string change;
        Trend trend = Trend::unknown;
        /// The time of the measurement, and why the size is missing or partial; one line each.
        std::string help;
        /// What opening or closing the row does, for a screen reader; empty for a row without
        /// children.
        std::string toggle;
        /// For a row without children: whether it has none, or whether they were not recorded.
        /// Empty for other rows.
        std::string noChildren;
        /// The name, the sizes and a known change in one sentence, for a screen reader.
        std::string accessibleText;
    };
};

std::string_view label(FolderSizeTable::Scope scope);
std::string_view label(FolderSizeTable::Comparison comparison);
/// `unknown` for an absent change.
FolderSizeTable::Trend trendOf(std::optional<std::int64_t> change);

/// The sizes that an event recorded; none for an event about something else.
std::vector<FolderInspectionRow> folderSizesOf(const Event& event);

/// All folders that either snapshot measured, sorted by change, from the largest growth to the
/// largest decrease. `previous` is null where nothing is compared; then the largest folder is
/// first.
std::vector<FolderInspectionRow> folderSizesOf(const Snapshot* previous, const Snapshot& latest);

/// The children of an open row, the largest growth or decrease first.
std::vector<FolderInspectionRow> childrenOf(const FolderInspectionRow& row);

std::vector<FolderSizeTable::Header> headersOf(FolderSizeTable::Scope scope,
                                               FolderSizeTable::Comparison comparison);
FolderSizeTable::Cells cellsOf(const FolderInspectionRow& row, const Calendar& calendar);

/// Sorts by one column: names by the rules of the user's language, sizes and changes by value, with
/// unknown ones last in both directions. Rows that are equal in the column keep their order.
void sortRows(std::vector<FolderInspectionRow>& rows, FolderSizeTable::Column column,
              bool ascending);

} // namespace tidemark
