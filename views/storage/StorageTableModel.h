#pragma once

#include "core/growth/StorageChartText.h"

#include <QAbstractTableModel>
#include <memory>

namespace tidemark {

/// A chart as a table, the newest first. It has the `symbolRole` of `FolderSizeModel`, since it is
/// painted by the same delegate.
class StorageTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { when, size, change, note, columns };

    using QAbstractTableModel::QAbstractTableModel;

    void show(const std::shared_ptr<const StorageChart>& shown);
    /// The point of the chart that a row is about.
    std::optional<std::size_t> pointAt(const QModelIndex& index) const;
    QModelIndex indexOf(std::optional<std::size_t> point) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::shared_ptr<const StorageChart> chart;
    std::vector<storageChartText::Row> rows;
};

} // namespace tidemark
