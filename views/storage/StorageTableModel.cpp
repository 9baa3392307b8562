#include "views/storage/StorageTableModel.h"

#include "views/base/ShownText.h"
#include "views/folders/FolderSizeModel.h"

#include <algorithm>

namespace tidemark {

namespace {

QString textOf(const storageChartText::Row& row, int column) {
    switch (column) {
    case StorageTableModel::when:
        return QString::fromStdString(row.when);
    case StorageTableModel::size:
        return wordsHere(row.size);
    case StorageTableModel::change:
        return wordsHere(row.change);
    default:
        return shownText(row.note);
    }
}

QString symbolOf(const storageChartText::Row& row) {
    return QString::fromLatin1(row.point ? "internaldrive" : row.size.empty() ? "clock" : "flag");
}

QVariant alignmentOfColumn(int column) {
    const bool isNumber = column == StorageTableModel::size || column == StorageTableModel::change;
    return QVariant::fromValue((isNumber ? Qt::AlignTrailing : Qt::AlignLeading)
                               | Qt::AlignVCenter);
}

} // namespace

void StorageTableModel::show(const std::shared_ptr<const StorageChart>& shown) {
    if (chart == shown)
        return;
    beginResetModel();
    chart = shown;
    rows =
        chart ? storageChartText::rows(*chart, Calendar()) : std::vector<storageChartText::Row>();
    endResetModel();
}

std::optional<std::size_t> StorageTableModel::pointAt(const QModelIndex& index) const {
    return index.isValid() ? rows[static_cast<std::size_t>(index.row())].point : std::nullopt;
}

QModelIndex StorageTableModel::indexOf(std::optional<std::size_t> point) const {
    if (!point)
        return {};
    const auto found = std::ranges::find(rows, point, &storageChartText::Row::point);
    return found == rows.end() ? QModelIndex() : index(static_cast<int>(found - rows.begin()), 0);
}

int StorageTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows.size());
}

int StorageTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns);
}

QVariant StorageTableModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto& row = rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return textOf(row, index.column());
    case Qt::AccessibleTextRole: {
        if (index.column() != when)
            return textOf(row, index.column());
        QStringList parts;
        for (int column = 0; column < columns; ++column)
            parts += textOf(row, column);
        parts.removeAll(QString());
        return parts.join(QStringLiteral(", "));
    }
    case Qt::ToolTipRole:
        return textOf(row, index.column());
    case Qt::TextAlignmentRole:
        return alignmentOfColumn(index.column());
    case FolderSizeModel::symbolRole:
        return symbolOf(row);
    default:
        return {};
    }
}

QVariant StorageTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columns)
        return {};
    if (role == Qt::DisplayRole)
        return shownText(storageChartText::headers()[static_cast<std::size_t>(section)]);
    return role == Qt::TextAlignmentRole ? alignmentOfColumn(section) : QVariant();
}

} // namespace tidemark
