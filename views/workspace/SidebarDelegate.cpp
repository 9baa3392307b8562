#include "views/workspace/SidebarDelegate.h"

#include "views/base/ListRow.h"
#include "views/base/RowPainter.h"
#include "views/workspace/SidebarModel.h"

#include <QPainter>

namespace tidemark {

namespace {

using Kind = SidebarRow::Kind;

Kind kindOf(const QModelIndex& index) {
    return static_cast<Kind>(index.data(SidebarModel::kindRole).toInt());
}

bool isPlain(Kind kind) {
    return kind == Kind::heading || kind == Kind::note;
}

QFont sized(QFont font, double scale, bool isBold) {
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(isBold);
    return font;
}

/// From the edge of the list to the panel of a row, and from there to its content.
constexpr int sidebarMargin = 8;
constexpr int padding = 8;

constexpr std::string_view filterSymbol = "filter";

/// The area of the filter button in a window that is laid out from left to right.
QRect toggleFromLeft(const QRect& row) {
    const int side = row.height() - 6;
    return {row.right() - sidebarMargin - padding / 2 - side, row.top() + 3, side, side};
}

bool showsToggle(const QStyleOptionViewItem& option, const QModelIndex& index) {
    const bool isActive = option.state.testFlag(QStyle::State_MouseOver)
                          || option.state.testFlag(QStyle::State_HasFocus);
    return isActive && index.data(SidebarModel::hasToggleRole).toBool();
}

void drawPlace(const RowPainter& row, const QStyleOptionViewItem& option, QRect panel,
               const QModelIndex& index) {
    row.drawPanel(panel);
    if (showsToggle(option, index)) {
        const QRect button = toggleFromLeft(option.rect);
        row.drawSymbol(button.adjusted(2, 2, -2, -2), filterSymbol, row.strong());
        panel.setRight(button.left() - padding / 2);
    }
    ListRow{.symbol = index.data(SidebarModel::symbolRole).toString().toStdString(),
            .title = option.text,
            .trailing = index.data(SidebarModel::trailingRole).toString(),
            .isTrailingMarked = index.data(SidebarModel::isFilterRole).toBool()}
        .draw(row, option.font, panel);
}

} // namespace

QRect SidebarDelegate::toggleArea(const QRect& row, Qt::LayoutDirection direction) {
    return QStyle::visualRect(direction, row, toggleFromLeft(row));
}

void SidebarDelegate::paint(QPainter* painter, const QStyleOptionViewItem& styled,
                            const QModelIndex& index) const {
    QStyleOptionViewItem option = styled;
    initStyleOption(&option, index);
    painter->save();
    const RowPainter row(*painter, option);
    const QRect panel = option.rect.adjusted(sidebarMargin, 1, -sidebarMargin, -1);
    QRect area = panel.adjusted(padding, 0, -padding, 0);
    if (isPlain(kindOf(index))) {
        const bool isHeading = kindOf(index) == Kind::heading;
        area.setTop(area.bottom() - option.fontMetrics.height() * 3 / 2);
        row.drawText(area, option.text, row.dim(),
                     sized(option.font, isHeading ? 0.92 : 1, isHeading));
    } else {
        drawPlace(row, option, panel, index);
    }
    painter->restore();
}

QSize SidebarDelegate::sizeHint(const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    const int line = option.fontMetrics.height();
    if (kindOf(index) == Kind::heading)
        return {line, index.row() == 0 ? line * 2 : line * 5 / 2};
    return {line, line + 14};
}

} // namespace tidemark
