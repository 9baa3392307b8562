#include "core/presentation/FolderSizeTable.h"

#include "core/base/Arithmetic.h"
#include "core/base/Collation.h"
#include "core/base/Text.h"
#include "core/presentation/Inspection.h"
#include "core/presentation/InspectionWords.h"
#include "core/system/TrashFolder.h"

#include <algorithm>
#include <set>

namespace tidemark {

namespace {

using Node = FolderInspectionNode;
using Row = FolderInspectionRow;
using Table = FolderSizeTable;

constexpr const char* unknownSize = "—";

/// The fixed name of a folder of the system, or else the recorded name.
std::string nameOf(const std::string& path, const std::string& recorded) {
    if (TrashFolder::is(path))
        return "Trash";
    if (path == "/Library/LaunchAgents")
        return "System Agents";
    if (path == "/Library/LaunchDaemons")
        return "System Daemons";
    return recorded;
}

Row rowOf(std::optional<Node> before, std::optional<Node> after) {
    Row row;
    const Node& shown = after ? *after : *before;
    row.id = shown.path;
    row.name = nameOf(shown.path, shown.name);
    row.beforeBytes = before ? before->bytes : std::nullopt;
    row.afterBytes = after ? after->bytes : std::nullopt;
    row.before = std::move(before);
    row.after = std::move(after);
    return row;
}

std::set<std::string> rootsOf(const Snapshot& snapshot) {
    std::set<std::string> roots;
    for (const auto& folder : snapshot.folders)
        roots.insert(folder->path);
    if (snapshot.folderStorage)
        for (const auto& report : *snapshot.folderStorage)
            roots.insert(report.path);
    if (snapshot.applicationStorage)
        roots.insert(snapshot.coverage.applicationRoots->begin(),
                     snapshot.coverage.applicationRoots->end());
    return roots;
}

std::string sizeText(const std::optional<Node>& node) {
    if (!node)
        return unknownSize;
    if (node->bytes)
        return byteString(*node->bytes);
    return node->recordedSubtotal ? "≥ " + byteString(*node->recordedSubtotal) : unknownSize;
}

std::optional<std::int64_t> changeOf(const Row& row) {
    if (!row.beforeBytes || !row.afterBytes)
        return std::nullopt;
    return saturatingDifference(*row.afterBytes, *row.beforeBytes);
}

std::string changeText(std::optional<std::int64_t> change) {
    if (!change)
        return unknownSize;
    return *change == 0 ? "No change" : signedBytes(*change);
}

std::string helpOf(const Node& node, const Calendar& calendar) {
    std::string help = node.measuredAt
                           ? "Size recorded " + inspectionWords::moment(*node.measuredAt, calendar)
                           : "Date not recorded";
    return node.issue ? help + "\n" + *node.issue : help;
}

bool hasChildren(const std::optional<Node>& node) {
    return node && node->children && !node->children->empty();
}

/// The text below an open row without children.
std::string noChildrenOf(const Row& row) {
    if (hasChildren(row.before) || hasChildren(row.after))
        return {};
    const bool areKnown = row.after && row.after->children;
    return areKnown ? "No recorded subfolders." : "Subfolder sizes not recorded yet.";
}

std::string spoken(std::string_view size) {
    if (size == unknownSize)
        return "unknown size";
    return size.starts_with("≥ ") ? "at least " + std::string(size.substr(4)) : std::string(size);
}

} // namespace

std::string_view label(FolderSizeTable::Scope scope) {
    return scope == Table::Scope::event ? "This event’s measurements" : "All Folders";
}

std::string_view label(FolderSizeTable::Comparison comparison) {
    return comparison == Table::Comparison::latestOnly ? "Latest Sizes Only"
                                                       : "Compare with Previous Capture";
}

std::vector<FolderInspectionRow> folderSizesOf(const Event& event) {
    std::vector<Row> rows;
    for (const Change& change : event.changes)
        if (const auto* size = std::get_if<change::FolderSizeChanged>(&change))
            rows.push_back(rowOf(Node::recorded(*size->before), Node::recorded(*size->after)));
    return rows;
}

std::vector<FolderInspectionRow> folderSizesOf(const Snapshot* previous, const Snapshot& latest) {
    std::set<std::string> roots = rootsOf(latest);
    if (previous)
        roots.merge(rootsOf(*previous));
    std::vector<Row> rows;
    for (const auto& root : roots)
        rows.push_back(
            rowOf(previous ? std::optional(Node::recorded(root, *previous)) : std::nullopt,
                  Node::recorded(root, latest)));
    sortRows(rows, previous ? Table::Column::change : Table::Column::after, false);
    return rows;
}

std::vector<FolderInspectionRow> childrenOf(const FolderInspectionRow& row) {
    return FolderInspection::rows(row.before ? &*row.before : nullptr,
                                  row.after ? &*row.after : nullptr);
}

FolderSizeTable::Trend trendOf(std::optional<std::int64_t> change) {
    using enum FolderSizeTable::Trend;
    if (!change)
        return unknown;
    return *change == 0 ? same : *change > 0 ? grew : shrank;
}

std::vector<FolderSizeTable::Header> headersOf(FolderSizeTable::Scope scope,
                                               FolderSizeTable::Comparison comparison) {
    using enum Table::Column;
    if (scope == Table::Scope::event)
        return {{folder, "Folder"}, {before, "Before"}, {after, "After"}, {change, "Change"}};
    if (comparison == Table::Comparison::latestOnly)
        return {{folder, "Folder"}, {after, "Latest"}};
    return {{folder, "Folder"}, {before, "Before"}, {after, "Latest"}, {change, "Change"}};
}

FolderSizeTable::Cells cellsOf(const FolderInspectionRow& row, const Calendar& calendar) {
    const auto change = changeOf(row);
    const Node& shown = row.after ? *row.after : *row.before;
    Table::Cells cells;
    cells.name = oneLine(row.name);
    cells.before = sizeText(row.before);
    cells.after = sizeText(row.after);
    cells.change = changeText(change);
    cells.trend = trendOf(change);
    cells.help = helpOf(shown, calendar);
    cells.noChildren = noChildrenOf(row);
    if (cells.noChildren.empty())
        cells.toggle =
            shown.isFileGroup ? "Toggle recorded file changes" : "Toggle subfolder sizes";
    cells.accessibleText = cells.name + ", " + spoken(cells.after);
    if (row.before)
        cells.accessibleText += ", before " + spoken(cells.before);
    if (change)
        cells.accessibleText += ", change " + cells.change;
    return cells;
}

void sortRows(std::vector<FolderInspectionRow>& rows, FolderSizeTable::Column column,
              bool ascending) {
    if (column == Table::Column::folder) {
        const Collation collation;
        std::ranges::stable_sort(rows, [&](const Row& a, const Row& b) {
            return ascending ? collation.compare(a.name, b.name) < 0
                             : collation.compare(b.name, a.name) < 0;
        });
        return;
    }
    const auto sizeOf = [column](const Row& row) -> std::optional<std::int64_t> {
        if (column == Table::Column::change)
            return changeOf(row);
        return column == Table::Column::before ? row.beforeBytes : row.afterBytes;
    };
    std::ranges::stable_sort(rows, [&](const Row& a, const Row& b) {
        const auto left = sizeOf(a);
        const auto right = sizeOf(b);
        if (!left || !right)
            return left.has_value() && !right.has_value();
        return ascending ? *left < *right : *right < *left;
    });
}

} // namespace tidemark
