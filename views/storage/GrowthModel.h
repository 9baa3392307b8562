#pragma once

#include "core/growth/GrowthText.h"

#include <QAbstractItemModel>

namespace tidemark {

/// The list of what grew, the largest change first, with the parts of a folder below it. It has the
/// roles of `FolderSizeModel`, by whose delegate it is painted.
class GrowthModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Column { name, before, after, change, share, columns };

    using QAbstractItemModel::QAbstractItemModel;

    void show(GrowthReport shown);
    /// The row of an item with this path; invalid without one.
    QModelIndex find(const QString& path) const;
    /// The path of a folder, of which there is a chart; empty for other rows.
    QString folderAt(const QModelIndex& index) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    /// The place in the report of the item at an index; for a part, that of its item.
    static std::size_t placeOf(const QModelIndex& index);
    const GrowthItem& itemAt(const QModelIndex& index) const;
    static QVariant itemData(const GrowthItem& item, const growthText::Row& row, int column,
                             int role);
    QVariant partData(const StorageContribution& part, int column, int role) const;

    GrowthReport report;
    /// The texts of its items, which take long to make, because they contain dates.
    std::vector<growthText::Row> rows;
};

} // namespace tidemark
