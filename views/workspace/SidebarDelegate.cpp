#include "views/workspace/SidebarDelegate.h"

#include "views/base/ShownText.h"
#include "views/base/TextColor.h"
#include "views/workspace/SidebarModel.h"

#include <QApplication>
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

void drawText(QPainter& painter, const QStyleOptionViewItem& option, const QRect& area,
              const QString& text, const QColor& color, Qt::Alignment alignment) {
    const QString elided =
        QFontMetrics(painter.font()).elidedText(text, Qt::ElideRight, area.width());
    painter.setPen(color);
    painter.drawText(QStyle::visualRect(option.direction, option.rect, area),
                     static_cast<int>(QStyle::visualAlignment(option.direction, alignment))
                         | Qt::AlignVCenter | Qt::TextSingleLine,
                     isolated(elided));
}

} // namespace

void SidebarDelegate::paint(QPainter* painter, const QStyleOptionViewItem& styled,
                            const QModelIndex& index) const {
    QStyleOptionViewItem option = styled;
    initStyleOption(&option, index);
    const int pad = option.fontMetrics.height() / 2;
    QRect area = option.rect.adjusted(pad, 0, -pad, 0);
    painter->save();
    painter->setFont(option.font);
    if (isPlain(kindOf(index))) {
        QFont font = option.font;
        font.setBold(kindOf(index) == Kind::heading);
        painter->setFont(font);
        drawText(*painter, option, area, option.text, textColor::dim(option), Qt::AlignLeading);
        painter->restore();
        return;
    }
    const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
    const int side = option.fontMetrics.height();
    const QRect symbol(area.left(), area.center().y() - side / 2, side, side);
    option.icon.paint(painter, QStyle::visualRect(option.direction, option.rect, symbol),
                      Qt::AlignCenter,
                      option.state & QStyle::State_Selected ? QIcon::Selected : QIcon::Normal);
    area.adjust(side + pad, 0, 0, 0);
    const QString count = index.data(SidebarModel::countRole).toString();
    drawText(*painter, option, area, count, textColor::dim(option), Qt::AlignTrailing);
    area.adjust(0, 0, -option.fontMetrics.horizontalAdvance(count) - pad, 0);
    drawText(*painter, option, area, option.text, textColor::strong(option), Qt::AlignLeading);
    painter->restore();
}

QSize SidebarDelegate::sizeHint(const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    const int line = option.fontMetrics.height();
    const bool opensGroup = kindOf(index) == Kind::heading && index.row() > 0;
    return {line, opensGroup ? line * 5 / 2 : line * 7 / 4};
}

} // namespace tidemark
