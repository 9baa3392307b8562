#pragma once

#include <QStyledItemDelegate>

namespace tidemark {

/// Paints a row of the sidebar: symbol and label, and at the trailing edge how much it holds. Under
/// the pointer and with the keyboard's focus, a button there makes the place a filter.
class SidebarDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    /// Where the filter button of a row lies that occupies `row`.
    static QRect toggleArea(const QRect& row, Qt::LayoutDirection direction);
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace tidemark
