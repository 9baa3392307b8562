#include "views/workspace/SidebarModel.h"

#include "views/base/ShownText.h"

#include <algorithm>

namespace tidemark {

using Kind = SidebarRow::Kind;

namespace {

QString tipOf(const SidebarRow& row) {
    if (!row.help.empty())
        return shownText(row.help);
    // A long name is elided before its date.
    if (row.kind == Kind::snapshot)
        return asPlainText(QString::fromStdString(row.label + "\n" + row.detail));
    return shownText(row.filterToggle);
}

} // namespace

void SidebarModel::show(std::vector<SidebarRow> next) {
    std::erase_if(next, [](const SidebarRow& row) { return row.kind == Kind::saveSnapshot; });
    if (next == rows)
        return;
    const auto isSamePlace = [](const SidebarRow& a, const SidebarRow& b) {
        return a.kind == b.kind && a.place == b.place && a.snapshot == b.snapshot;
    };
    // Counts change all the time; a reset would lose the keyboard's place.
    if (std::ranges::equal(rows, next, isSamePlace)) {
        rows = std::move(next);
        Q_EMIT dataChanged(index(0), index(rowCount() - 1));
        return;
    }
    beginResetModel();
    rows = std::move(next);
    endResetModel();
}

const SidebarRow& SidebarModel::rowAt(const QModelIndex& index) const {
    return rows[static_cast<std::size_t>(index.row())];
}

QModelIndex SidebarModel::selected() const {
    const auto found = std::ranges::find(rows, true, &SidebarRow::isSelected);
    return found == rows.end() ? QModelIndex() : index(static_cast<int>(found - rows.begin()));
}

int SidebarModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows.size());
}

QVariant SidebarModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const SidebarRow& row = rowAt(index);
    switch (role) {
    case Qt::DisplayRole:
        return row.kind == Kind::snapshot ? QString::fromStdString(row.label)
                                          : shownText(row.label);
    case Qt::AccessibleTextRole:
        return row.kind == Kind::snapshot
                   ? shownPart(row.accessibleText)
                   : spokenText(row.accessibleText, row.label, shownText(row.label));
    case Qt::ToolTipRole:
        return tipOf(row);
    case kindRole:
        return static_cast<int>(row.kind);
    case symbolRole:
        return QString::fromStdString(row.symbol);
    case trailingRole:
        return row.count ? QString::number(*row.count) : QString::fromStdString(row.day);
    case isFilterRole:
        return row.isFilter;
    case hasToggleRole:
        return !row.filterToggle.empty();
    default:
        return {};
    }
}

Qt::ItemFlags SidebarModel::flags(const QModelIndex& index) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return Qt::NoItemFlags;
    const Kind kind = rowAt(index).kind;
    if (kind == Kind::heading || kind == Kind::note)
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

} // namespace tidemark
