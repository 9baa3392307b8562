#include "views/search/SearchResultDelegate.h"

#include "views/base/RowPainter.h"
#include "views/search/SearchResultModel.h"

#include <QPainter>

namespace tidemark {

namespace {

/// From the edge of the list to the panel of a row.
constexpr int margin = 8;
constexpr double secondLineScale = 0.92;

QFont small(QFont font) {
    font.setPointSizeF(font.pointSizeF() * secondLineScale);
    return font;
}

} // namespace

void SearchResultDelegate::paint(QPainter* painter, const QStyleOptionViewItem& styled,
                                 const QModelIndex& index) const {
    QStyleOptionViewItem option = styled;
    initStyleOption(&option, index);
    const auto texts = index.data(SearchResultModel::rowRole).value<SearchResultRow>();
    const QFontMetrics metrics(option.font);
    const int line = metrics.height();
    const int pad = line / 2;
    painter->save();
    const RowPainter row(*painter, option);
    const QRect panel = option.rect.adjusted(margin, 1, -margin, -1);
    row.drawPanel(panel);
    const int side = line + 4;
    row.drawSymbol({panel.left() + pad, panel.top(), side, panel.height()}, texts.symbol,
                   row.strong());
    const QRect area = panel.adjusted(2 * pad + side, 0, -pad, 0);
    QRect first(area.left(), panel.center().y() - line + 1, area.width(), line);
    const QRect second = first.translated(0, line);
    const QString when = QString::fromStdString(texts.when);
    const QFont smaller = small(option.font);
    row.drawText(first, when, row.dim(), smaller, Qt::AlignTrailing);
    first.adjust(0, 0, -QFontMetrics(smaller).horizontalAdvance(when) - 2 * pad, 0);
    row.drawText(first, QString::fromStdString(texts.title), row.strong(), option.font);
    row.drawText(second, QString::fromStdString(texts.subtitle), row.dim(), smaller);
    painter->restore();
}

QSize SearchResultDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    const int line = QFontMetrics(option.font).height();
    return {line, 3 * line + 2};
}

} // namespace tidemark
