#pragma once

#include <QStyledItemDelegate>

namespace tidemark {

/// Paints a row of the sidebar: symbol and label, and at the trailing edge how much it holds.
class SidebarDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace tidemark
