#include "views/storage/GrowthModel.h"

#include "core/base/Text.h"
#include "views/base/ShownText.h"
#include "views/folders/FolderSizeModel.h"

#include <algorithm>

namespace tidemark {

namespace {

using Trend = FolderSizeTable::Trend;
using Roles = FolderSizeModel;

/// The internal number of a top row; that of a part is the row of its item plus 1.
constexpr quintptr ofItem = 0;

int trendOf(std::int64_t change) {
    return static_cast<int>(change > 0 ? Trend::grew : change < 0 ? Trend::shrank : Trend::unknown);
}

QString symbolOf(const GrowthItem& item) {
    return QString::fromLatin1(item.kind == GrowthItem::Kind::folder ? "folder" : "app");
}

QVariant alignmentOf(int column) {
    return QVariant::fromValue((column == GrowthModel::name ? Qt::AlignLeading : Qt::AlignTrailing)
                               | Qt::AlignVCenter);
}

} // namespace

void GrowthModel::show(GrowthReport shown) {
    if (report == shown)
        return;
    beginResetModel();
    report = std::move(shown);
    rows.clear();
    const Calendar calendar;
    for (const auto& item : report.items)
        rows.push_back(growthText::row(item, calendar));
    endResetModel();
}

QModelIndex GrowthModel::find(const QString& path) const {
    const auto found = std::ranges::find(report.items, path.toStdString(),
                                         [](const auto& item) { return item.path; });
    return found == report.items.end() ? QModelIndex()
                                       : index(static_cast<int>(found - report.items.begin()), 0);
}

QString GrowthModel::folderAt(const QModelIndex& index) const {
    if (!index.isValid() || index.internalId() != ofItem)
        return {};
    const auto& item = itemAt(index);
    return item.kind == GrowthItem::Kind::folder ? QString::fromStdString(item.path) : QString();
}

std::size_t GrowthModel::placeOf(const QModelIndex& index) {
    return static_cast<std::size_t>(
        index.internalId() == ofItem ? static_cast<quintptr>(index.row()) : index.internalId() - 1);
}

const GrowthItem& GrowthModel::itemAt(const QModelIndex& index) const {
    return report.items[placeOf(index)];
}

QModelIndex GrowthModel::index(int row, int column, const QModelIndex& above) const {
    if (!hasIndex(row, column, above))
        return {};
    return createIndex(row, column,
                       above.isValid() ? static_cast<quintptr>(above.row()) + 1 : ofItem);
}

QModelIndex GrowthModel::parent(const QModelIndex& child) const {
    if (!child.isValid() || child.internalId() == ofItem)
        return {};
    return createIndex(static_cast<int>(child.internalId()) - 1, 0, ofItem);
}

int GrowthModel::rowCount(const QModelIndex& above) const {
    if (!above.isValid())
        return static_cast<int>(report.items.size());
    if (above.column() > 0 || above.internalId() != ofItem)
        return 0;
    return static_cast<int>(itemAt(above).parts.size());
}

int GrowthModel::columnCount(const QModelIndex&) const {
    return columns;
}

QVariant GrowthModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == Qt::TextAlignmentRole)
        return alignmentOf(index.column());
    const GrowthItem& item = itemAt(index);
    if (index.internalId() == ofItem)
        return itemData(item, rows[placeOf(index)], index.column(), role);
    return partData(item.parts[static_cast<std::size_t>(index.row())], index.column(), role);
}

QVariant GrowthModel::itemData(const GrowthItem& item, const growthText::Row& row, int column,
                               int role) {
    const auto shownName = [&] {
        return item.kind == GrowthItem::Kind::folder ? shownFolderName(item.path, row.name)
                                                     : QString::fromStdString(row.name);
    };
    switch (role) {
    case Qt::DisplayRole:
        return column == name     ? shownName()
               : column == before ? wordsHere(row.before)
               : column == after  ? wordsHere(row.after)
               : column == change ? shownParts(row.change, ", ")
                                  : QString::fromStdString(row.share);
    case Qt::AccessibleTextRole:
        return column == name ? spokenText(row.accessibleText, row.name, shownName())
                              : itemData(item, row, column, Qt::DisplayRole);
    case Qt::ToolTipRole:
        return asPlainText(shownParts(row.help, "\n"));
    case Roles::symbolRole:
        return symbolOf(item);
    case Roles::shareRole:
        return column == share ? QVariant(item.share) : QVariant();
    case Roles::trendRole:
        return column == change ? QVariant(trendOf(item.change())) : QVariant();
    case Roles::idRole:
        return QString::fromStdString(item.path);
    default:
        return {};
    }
}

QVariant GrowthModel::partData(const StorageContribution& part, int column, int role) const {
    if (role == Roles::symbolRole)
        return QStringLiteral("folder");
    if (role == Roles::trendRole)
        return column == change ? QVariant(trendOf(part.delta())) : QVariant();
    if (role == Qt::AccessibleTextRole && column == name)
        return QString(QString::fromStdString(oneLine(part.name)) + QStringLiteral(", ")
                       + shownText(signedBytes(part.delta())));
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
        return {};
    switch (column) {
    case name:
        return QString::fromStdString(oneLine(part.name));
    case before:
        return wordsHere(byteString(part.before));
    case after:
        return wordsHere(byteString(part.after));
    case change:
        return shownText(signedBytes(part.delta()));
    default:
        return {};
    }
}

QVariant GrowthModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columns)
        return {};
    if (role == Qt::TextAlignmentRole)
        return alignmentOf(section);
    if (role != Qt::DisplayRole)
        return {};
    const QString titles[] = {tr("Folder or application"), tr("Before"), tr("After"), tr("Change"),
                              tr("Share")};
    return titles[section];
}

} // namespace tidemark
