#include "views/folders/FolderSizeDelegate.h"

#include "views/base/RowPainter.h"
#include "views/folders/FolderSizeModel.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace tidemark {

namespace {

constexpr int cellPadding = 8;
/// Pixels from a number to the trailing edge of its column.
constexpr int trailingSpace = 18;
static_assert(cellPadding + trailingSpace == FolderSizeDelegate::margins);
constexpr int barThickness = 4;
constexpr int shortestBar = 2;

void drawName(const RowPainter& row, const QStyleOptionViewItem& option, const QModelIndex& index) {
    const int side = option.fontMetrics.height() + 2;
    QRect area = option.rect.adjusted(2, -FolderSizeDelegate::textOffset, -cellPadding,
                                      -FolderSizeDelegate::textOffset);
    row.drawSymbol({area.left(), area.top(), side, area.height()},
                   index.data(FolderSizeModel::symbolRole).toString().toStdString(), row.strong());
    area.setLeft(area.left() + side + cellPadding);
    row.drawText(area, option.text, row.strong(), option.font, Qt::AlignLeading, Qt::ElideMiddle);
}

void drawBar(const RowPainter& row, const QStyleOptionViewItem& option, double share) {
    const QRect area = option.rect.adjusted(cellPadding, 0, -trailingSpace, 0);
    const int length = std::max(shortestBar, static_cast<int>(std::lround(area.width() * share)));
    QColor color = row.accent();
    color.setAlphaF(row.isSelected() ? 0.8F : 0.55F);
    row.fill({area.right() - length + 1, area.bottom() - barThickness - 1, length, barThickness},
             color, barThickness / 2.0);
}

/// Adds a sign to the number, for readers who can’t see the colour of growth.
QString withTrend(const QString& text, const QVariant& trend) {
    using enum FolderSizeTable::Trend;
    if (!trend.isValid())
        return text;
    switch (static_cast<FolderSizeTable::Trend>(trend.toInt())) {
    case grew:
        return text + QStringLiteral(" ▲");
    case shrank:
        return text + QStringLiteral(" ▼");
    default:
        return text;
    }
}

} // namespace

void FolderSizeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& styled,
                               const QModelIndex& index) const {
    QStyleOptionViewItem option = styled;
    initStyleOption(&option, index);
    painter->save();
    const RowPainter row(*painter, option);
    if (index.column() == 0) {
        drawName(row, option, index);
    } else {
        const QVariant trend = index.data(FolderSizeModel::trendRole);
        const bool isQuiet =
            trend.isValid() && trend.toInt() <= static_cast<int>(FolderSizeTable::Trend::same);
        row.drawText(option.rect.adjusted(0, -textOffset, -trailingSpace, -textOffset),
                     withTrend(option.text, trend), isQuiet ? row.dim() : row.strong(), option.font,
                     option.displayAlignment & Qt::AlignHorizontal_Mask);
        const QVariant share = index.data(FolderSizeModel::shareRole);
        if (share.toDouble() > 0)
            drawBar(row, option, share.toDouble());
    }
    painter->restore();
}

QSize FolderSizeDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    const int line = option.fontMetrics.height();
    return {line, line + 16};
}

} // namespace tidemark
