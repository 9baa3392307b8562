#pragma once

#include <QStyledItemDelegate>

namespace tidemark {

/// Paints a row of `SearchResultModel`: symbol, title and time, and below them the second line.
class SearchResultDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace tidemark
