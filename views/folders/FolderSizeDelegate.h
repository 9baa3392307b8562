#pragma once

#include <QStyledItemDelegate>

namespace tidemark {

/// Paints a cell of the folder sizes: the symbol and the name, or a size with a bar for its share.
/// The background of a row is the view's.
class FolderSizeDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// What a cell of a number needs beside its text.
    static constexpr int margins = 26;
    /// How much the texts of a row are above its middle, for the bar below a number.
    static constexpr int raised = 2;

    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace tidemark
