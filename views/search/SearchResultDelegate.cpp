#include "views/search/SearchResultDelegate.h"

#include "views/base/ListRow.h"
#include "views/base/RowPainter.h"
#include "views/search/SearchResultModel.h"

#include <QPainter>

namespace tidemark {

namespace {

/// Pixels from the edge of the list to the panel of a row.
constexpr int margin = 8;

} // namespace

void SearchResultDelegate::paint(QPainter* painter, const QStyleOptionViewItem& styled,
                                 const QModelIndex& index) const {
    QStyleOptionViewItem option = styled;
    initStyleOption(&option, index);
    const auto texts = index.data(SearchResultModel::rowRole).value<SearchResultRow>();
    const QRect panel = option.rect.adjusted(margin, 1, -margin, -1);
    painter->save();
    const RowPainter row(*painter, option);
    row.drawPanel(panel);
    ListRow{.symbol = texts.symbol,
            .title = QString::fromStdString(texts.title),
            .trailing = QString::fromStdString(texts.when),
            .below = QString::fromStdString(texts.below())}
        .draw(row, option.font, panel);
    painter->restore();
}

QSize SearchResultDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return {option.fontMetrics.height(), ListRow::heightOfTwoLines(option.font)};
}

} // namespace tidemark
