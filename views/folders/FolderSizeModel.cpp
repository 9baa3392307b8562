#include "views/folders/FolderSizeModel.h"

#include "core/base/Text.h"
#include "core/system/TrashFolder.h"
#include "views/base/ShownText.h"

#include <algorithm>
#include <unordered_map>

namespace tidemark {

using Table = FolderSizeTable;

struct FolderSizeModel::Node {
    FolderInspectionRow row{};
    Node* parent = nullptr;
    int position = 0;
    /// Absent until they are fetched.
    std::optional<std::vector<std::unique_ptr<Node>>> children{};
    std::int64_t largestChild = 0;
    std::optional<Table::Cells> cells{};
};

namespace {

bool hasParts(const std::optional<FolderInspectionNode>& node) {
    return node && node->children && !node->children->empty();
}

/// True for the files of a folder that are counted together.
bool isFileGroup(const FolderInspectionRow& row) {
    const auto& shown = row.after ? row.after : row.before;
    return shown && shown->isFileGroup;
}

const char* symbolOf(const FolderInspectionRow& row, bool isInFileGroup) {
    if (isFileGroup(row))
        return "doc.on.doc";
    if (isInFileGroup)
        return "doc";
    return TrashFolder::is(row.id) ? "trash" : "folder";
}

QString tipOfRow(const QString& name, const Table::Cells& cells) {
    QStringList lines{name, shownParts(cells.help, "\n")};
    if (!cells.noChildren.empty())
        lines += wordsHere(cells.noChildren);
    return asPlainText(lines.join(u'\n'));
}

} // namespace

FolderSizeModel::FolderSizeModel(QObject* parent)
    : QAbstractItemModel(parent), root(std::make_unique<Node>()) {
    root->children.emplace();
}

FolderSizeModel::~FolderSizeModel() = default;

void FolderSizeModel::show(std::vector<FolderInspectionRow> rows,
                           std::vector<FolderSizeTable::Header> columns) {
    beginResetModel();
    headers = std::move(columns);
    root = std::make_unique<Node>();
    fill(*root, std::move(rows));
    endResetModel();
}

void FolderSizeModel::fill(Node& node, std::vector<FolderInspectionRow> rows) const {
    auto& children = node.children.emplace();
    for (auto& row : rows) {
        node.largestChild = std::max(node.largestChild, row.afterBytes.value_or(0));
        children.push_back(
            std::make_unique<Node>(Node{.row = std::move(row),
                                        .parent = &node,
                                        .position = static_cast<int>(children.size())}));
    }
    if (sorting)
        sortChildren(node);
}

void FolderSizeModel::sortChildren(Node& node) const {
    if (!node.children)
        return;
    std::vector<FolderInspectionRow> rows;
    std::unordered_map<std::string, std::unique_ptr<Node>> nodes;
    for (auto& child : *node.children) {
        rows.push_back(std::move(child->row));
        nodes.emplace(rows.back().id, std::move(child));
    }
    sortRows(rows, sorting->first, sorting->second == Qt::AscendingOrder);
    node.children->clear();
    for (auto& row : rows) {
        auto child = std::move(nodes.at(row.id));
        child->row = std::move(row);
        child->position = static_cast<int>(node.children->size());
        sortChildren(*child);
        node.children->push_back(std::move(child));
    }
}

FolderSizeModel::Node& FolderSizeModel::nodeAt(const QModelIndex& index) const {
    return index.isValid() ? *static_cast<Node*>(index.internalPointer()) : *root;
}

const FolderSizeTable::Cells& FolderSizeModel::cellsAt(Node& node) const {
    if (!node.cells)
        node.cells = cellsOf(node.row, Calendar());
    return *node.cells;
}

QModelIndex FolderSizeModel::find(const QString& id, const QModelIndex& parent) const {
    const Node& node = nodeAt(parent);
    if (!node.children)
        return {};
    const auto found = std::ranges::find(*node.children, id.toStdString(),
                                         [](const auto& child) { return child->row.id; });
    return found == node.children->end() ? QModelIndex() : index((*found)->position, 0, parent);
}

const FolderInspectionRow& FolderSizeModel::rowAt(const QModelIndex& index) const {
    return nodeAt(index).row;
}

QModelIndex FolderSizeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column,
                       (*nodeAt(parent).children)[static_cast<std::size_t>(row)].get());
}

QModelIndex FolderSizeModel::parent(const QModelIndex& child) const {
    if (!child.isValid())
        return {};
    Node* above = nodeAt(child).parent;
    return above == root.get() ? QModelIndex() : createIndex(above->position, 0, above);
}

int FolderSizeModel::rowCount(const QModelIndex& parent) const {
    if (parent.column() > 0)
        return 0;
    const Node& node = nodeAt(parent);
    return node.children ? static_cast<int>(node.children->size()) : 0;
}

int FolderSizeModel::columnCount(const QModelIndex&) const {
    return static_cast<int>(headers.size());
}

bool FolderSizeModel::hasChildren(const QModelIndex& parent) const {
    if (parent.column() > 0)
        return false;
    const Node& node = nodeAt(parent);
    if (node.children)
        return !node.children->empty();
    return hasParts(node.row.before) || hasParts(node.row.after);
}

bool FolderSizeModel::canFetchMore(const QModelIndex& parent) const {
    return parent.isValid() && parent.column() == 0 && !nodeAt(parent).children
           && hasChildren(parent);
}

void FolderSizeModel::fetchMore(const QModelIndex& parent) {
    if (!canFetchMore(parent))
        return;
    Node& node = nodeAt(parent);
    auto rows = childrenOf(node.row);
    beginInsertRows(parent, 0, static_cast<int>(rows.size()) - 1);
    fill(node, std::move(rows));
    endInsertRows();
}

QVariant FolderSizeModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    Node& node = nodeAt(index);
    const Column column = columnAt(index.column());
    const auto name = [&] { return shownFolderName(node.row.id, cellsAt(node).name); };
    switch (role) {
    case Qt::DisplayRole: {
        const auto& cells = cellsAt(node);
        return column == Column::folder   ? name()
               : column == Column::before ? wordsHere(cells.before)
               : column == Column::after  ? wordsHere(cells.after)
                                          : wordsHere(cells.change);
    }
    case Qt::AccessibleTextRole:
        return column == Column::folder
                   ? spokenText(cellsAt(node).accessibleText, cellsAt(node).name, name())
                   : data(index, Qt::DisplayRole);
    case Qt::AccessibleDescriptionRole:
        return column == Column::folder ? wordsHere(cellsAt(node).toggle) : QVariant();
    case Qt::ToolTipRole:
        return tipOfRow(name(), cellsAt(node));
    case Qt::TextAlignmentRole:
        return QVariant::fromValue((column == Column::folder ? Qt::AlignLeading : Qt::AlignTrailing)
                                   | Qt::AlignVCenter);
    case symbolRole: {
        return QString::fromLatin1(symbolOf(node.row, isFileGroup(node.parent->row)));
    }
    case shareRole:
        if (column != Column::after || !node.row.afterBytes || node.parent->largestChild <= 0)
            return {};
        return static_cast<double>(*node.row.afterBytes)
               / static_cast<double>(node.parent->largestChild);
    case trendRole:
        return column == Column::change ? QVariant(static_cast<int>(cellsAt(node).trend))
                                        : QVariant();
    case idRole:
        return QString::fromStdString(node.row.id);
    default:
        return {};
    }
}

QVariant FolderSizeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount({}))
        return {};
    const auto& [column, title] = headers[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole)
        return wordsHere(title);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue((column == Column::folder ? Qt::AlignLeading : Qt::AlignTrailing)
                                   | Qt::AlignVCenter);
    return {};
}

void FolderSizeModel::sort(int section, Qt::SortOrder order) {
    if (section < 0 || section >= columnCount({}))
        return;
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    sorting = {columnAt(section), order};
    sortChildren(*root);
    const auto before = persistentIndexList();
    QModelIndexList after;
    for (const auto& index : before)
        after += createIndex(nodeAt(index).position, index.column(), index.internalPointer());
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

} // namespace tidemark
