#pragma once

#include "core/presentation/FolderSizeTable.h"

#include <QAbstractItemModel>
#include <memory>

namespace tidemark {

/// The tree of folder sizes. The children of a folder are looked up when it is opened, and the
/// texts of a row when it is painted: a folder can have thousands of children.
class FolderSizeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Role {
        /// The name of the symbol image, which is painted in the first column.
        symbolRole = Qt::UserRole,
        /// The present size as a share of the largest one among the children of the same row; only
        /// in the column of the present size, and absent where that size is unknown.
        shareRole,
        /// A `FolderSizeTable::Trend` as a number; in the column of the change.
        trendRole,
        /// The path, by which a row is found again.
        idRole,
    };
    using Column = FolderSizeTable::Column;

    explicit FolderSizeModel(QObject* parent = nullptr);
    ~FolderSizeModel() override;

    /// Shows these rows, in the order that the user chose last.
    void show(std::vector<FolderInspectionRow> rows, std::vector<FolderSizeTable::Header> columns);
    Column columnAt(int section) const { return headers[static_cast<std::size_t>(section)].column; }
    /// The loaded row below `parent` with this path; invalid without one.
    QModelIndex find(const QString& id, const QModelIndex& parent = {}) const;
    /// The row at an index, which must be valid.
    const FolderInspectionRow& rowAt(const QModelIndex& index) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int section, Qt::SortOrder order) override;

private:
    struct Node;

    Node& nodeAt(const QModelIndex& index) const;
    void fill(Node& node, std::vector<FolderInspectionRow> rows) const;
    void sortChildren(Node& node) const;
    const FolderSizeTable::Cells& cellsAt(Node& node) const;

    std::vector<FolderSizeTable::Header> headers;
    std::unique_ptr<Node> root;
    /// Absent for the order in which the core returns the rows.
    std::optional<std::pair<Column, Qt::SortOrder>> sorting;
};

} // namespace tidemark
