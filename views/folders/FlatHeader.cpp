#include "views/folders/FlatHeader.h"

#include "views/base/ShownText.h"
#include "views/base/TextColor.h"

#include <QPainter>

namespace tidemark {

namespace {

constexpr int padding = 8;
/// Pixels from a title to the end of its column, as many as in the rows below.
constexpr int trailing = 18;
/// Pixels before the title of the first section, which begins where the names in the rows do.
constexpr int indent = 22;
constexpr double textScale = 0.92;

} // namespace

FlatHeader::FlatHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setSectionsClickable(true);
    setHighlightSections(false);
    setStretchLastSection(false);
    setFocusPolicy(Qt::NoFocus);
}

QSize FlatHeader::sizeHint() const {
    return {QHeaderView::sizeHint().width(), fontMetrics().height() + 2 * padding};
}

void FlatHeader::paintEvent(QPaintEvent* event) {
    {
        QPainter painter(viewport());
        painter.fillRect(viewport()->rect(), palette().color(QPalette::Base));
        painter.setPen(palette().color(QPalette::Midlight));
        painter.drawLine(viewport()->rect().bottomLeft(), viewport()->rect().bottomRight());
    }
    QHeaderView::paintEvent(event);
}

void FlatHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    const bool isSorted = isSortIndicatorShown() && sortIndicatorSection() == section;
    QString text = model()->headerData(section, Qt::Horizontal).toString();
    if (isSorted)
        text += sortIndicatorOrder() == Qt::AscendingOrder ? QStringLiteral(" ↑")
                                                           : QStringLiteral(" ↓");
    const auto alignment = static_cast<Qt::Alignment>(
        model()->headerData(section, Qt::Horizontal, Qt::TextAlignmentRole).toInt());
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * textScale);
    small.setBold(true);
    QRect area = rect.adjusted(section == 0 ? indent : 0, 0, -trailing, 0);
    area = QStyle::visualRect(layoutDirection(), rect, area);
    const QColor strong = palette().color(QPalette::Active, QPalette::Text);
    painter->setFont(small);
    painter->setPen(isSorted ? strong : textColor::dimmed(strong));
    painter->drawText(area,
                      static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment))
                          | Qt::AlignVCenter | Qt::TextSingleLine,
                      isolated(QFontMetrics(small).elidedText(text, Qt::ElideRight, area.width())));
}

} // namespace tidemark
