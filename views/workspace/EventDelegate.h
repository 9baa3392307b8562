#pragma once

#include <QStyledItemDelegate>

namespace tidemark {

/// Paints a row of `TimelineModel`: symbol, title and time, and below them the second line; a dot
/// before what asks for attention. A gap in the observation is one line on stripes. Heights come
/// from the font alone, never from a text.
class EventDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace tidemark
