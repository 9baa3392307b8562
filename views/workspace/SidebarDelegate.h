#pragma once

#include <QStyledItemDelegate>

namespace tidemark {

/// Paints a row of the sidebar: symbol and label, and at the trailing edge how much it holds. While
/// the pointer is over a row, or the row has the keyboard's focus, it also has a button that makes
/// its sidebar item a filter.
class SidebarDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    /// The area of the filter button in a row whose area is `row`.
    static QRect toggleArea(const QRect& row, Qt::LayoutDirection direction);
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace tidemark
