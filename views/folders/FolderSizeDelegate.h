#pragma once

#include <QStyledItemDelegate>

namespace tidemark {

/// Paints a cell of the folder sizes: the symbol and the name, or a size or change, below which a
/// bar can show a share. The view paints the background of the rows.
class FolderSizeDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// Pixels that a column of numbers needs besides the text: the sum of the space on both sides.
    static constexpr int margins = 26;
    /// Pixels by which texts are drawn above the middle of their row, to leave room for the bar
    /// below a number.
    static constexpr int textOffset = 2;

    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace tidemark
