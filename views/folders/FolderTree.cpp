#include "views/folders/FolderTree.h"

#include "views/base/RowPainter.h"
#include "views/base/ShownText.h"
#include "views/base/ThinScrollBar.h"
#include "views/folders/FlatHeader.h"
#include "views/folders/FolderSizeDelegate.h"

#include <QHeaderView>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace tidemark {

namespace {

constexpr int margin = 8;
constexpr int levelIndent = 20;
/// As wide as the sizes of folders become on usual disks, and as changes of them with their sign.
constexpr auto widestSize = "1,023.99 GB";
constexpr auto widestChange = "+223.99 GB ▲";

} // namespace

FolderTree::FolderTree(QWidget* parent) : QTreeView(parent) {
    setHeader(new FlatHeader(this));
    setItemDelegate(new FolderSizeDelegate(this));
    setFrameShape(QFrame::NoFrame);
    setUniformRowHeights(true);
    setSelectionBehavior(SelectRows);
    // Otherwise the style would draw a frame around the panel of the row.
    setAllColumnsShowFocus(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setIndentation(levelIndent);
    setSortingEnabled(true);
    setExpandsOnDoubleClick(true);
    useThinScrollBars(*this);
}

void FolderTree::fitColumns() {
    const auto widthOf = [&](const QString& text) {
        return fontMetrics().horizontalAdvance(text) + FolderSizeDelegate::margins;
    };
    const int size = widthOf(QString::fromUtf8(widestSize));
    // In some languages, the words are wider than any number.
    const int change =
        std::max(widthOf(QString::fromUtf8(widestChange)), widthOf(wordsHere("No change")));
    const int last = header()->count() - 1;
    for (int column = 0; column <= last; ++column) {
        header()->setSectionResizeMode(column, column == 0 ? QHeaderView::Stretch
                                                           : QHeaderView::Interactive);
        if (column > 0)
            header()->resizeSection(column, column == last ? change : size);
    }
}

void FolderTree::drawRow(QPainter* painter, const QStyleOptionViewItem& styled,
                         const QModelIndex& index) const {
    QStyleOptionViewItem option = styled;
    if (selectionModel()->isSelected(index))
        option.state |= QStyle::State_Selected;
    if (hasFocus() && index.siblingAtColumn(0) == currentIndex().siblingAtColumn(0))
        option.state |= QStyle::State_HasFocus;
    if (window()->testAttribute(Qt::WA_KeyboardFocusChange))
        option.state |= QStyle::State_KeyboardFocusChange;
    painter->save();
    RowPainter(*painter, option).drawPanel(option.rect.adjusted(margin, 1, -margin, -1));
    painter->restore();
    QTreeView::drawRow(painter, styled, index);
}

/// Draws the panel of a row again over its branches, where the style has filled a selected row to
/// the edge.
void FolderTree::coverBranches(QPainter& painter, const QRect& rect,
                               const QModelIndex& index) const {
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = {0, rect.top(), viewport()->width(), rect.height()};
    if (selectionModel()->isSelected(index))
        option.state |= QStyle::State_Selected;
    painter.save();
    painter.setClipRect(rect);
    painter.fillRect(rect, palette().color(QPalette::Base));
    RowPainter(painter, option).drawPanel(option.rect.adjusted(margin, 1, -margin, -1));
    painter.restore();
}

void FolderTree::drawBranches(QPainter* painter, const QRect& rect,
                              const QModelIndex& index) const {
    coverBranches(*painter, rect, index);
    if (!model()->hasChildren(index))
        return;
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const double middle = rect.center().y() + 0.5 - FolderSizeDelegate::textOffset;
    QRectF place(0, 0, 5, 9);
    place.moveCenter(isMirrored ? QPointF(rect.left() + levelIndent / 2.0, middle)
                                : QPointF(rect.right() - levelIndent / 2.0 + 4, middle));
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(place.center());
    if (isExpanded(index))
        painter->rotate(90);
    else if (isMirrored)
        painter->rotate(180);
    QPainterPath chevron(QPointF(-2, -4));
    chevron.lineTo(2.5, 0);
    chevron.lineTo(-2, 4);
    const bool isSelected = selectionModel()->isSelected(index);
    painter->setPen(
        QPen(palette().color(isSelected ? QPalette::HighlightedText : QPalette::Text), 1.4));
    painter->drawPath(chevron);
    painter->restore();
}

} // namespace tidemark
