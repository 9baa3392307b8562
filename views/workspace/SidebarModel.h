#pragma once

#include "core/presentation/Sidebar.h"

#include <QAbstractListModel>

namespace tidemark {

/// The rows of the sidebar but for the command at its end, which is a button. Headings and notes
/// can't be selected.
class SidebarModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        /// A `SidebarRow::Kind` as a number.
        kindRole = Qt::UserRole,
        /// The name of the symbol image.
        symbolRole,
        /// How much the place holds, or when the snapshot was taken; may be empty.
        trailingRole,
        /// True when the place is a filter of the timeline.
        isFilterRole,
        /// True when it can be one.
        hasToggleRole,
    };

    using QAbstractListModel::QAbstractListModel;

    void show(std::vector<SidebarRow> rows);
    const SidebarRow& rowAt(const QModelIndex& index) const;
    /// What the list shows; invalid when that has no row.
    QModelIndex selected() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    std::vector<SidebarRow> rows;
};

} // namespace tidemark
