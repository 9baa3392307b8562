#include "views/base/RowPainter.h"

#include "views/base/ShownText.h"
#include "views/base/TextColor.h"
#include "views/base/TintedSymbol.h"

#include <QPainter>

namespace tidemark {

namespace {

constexpr double rowRadius = 6;
/// How much of the text colour lies over a row under the pointer.
constexpr double hoverStrength = 0.06;
constexpr qsizetype mostCharacters = 1000;
constexpr double hatchStrength = 0.22;

/// The colour with the opacity `strength`, from 0 to 1.
QColor veil(QColor color, double strength) {
    color.setAlphaF(static_cast<float>(strength));
    return color;
}

} // namespace

RowPainter::RowPainter(QPainter& used, const QStyleOptionViewItem& styled)
    : painter(used), option(styled) {
    painter.setRenderHint(QPainter::Antialiasing);
}

QColor RowPainter::strong() const {
    return textColor::strong(option);
}

QColor RowPainter::dim() const {
    return isSelected() ? veil(strong(), 0.85) : textColor::dim(option);
}

QColor RowPainter::accent() const {
    return isSelected() ? strong() : option.palette.color(QPalette::Active, QPalette::Highlight);
}

void RowPainter::drawPanel(const QRect& area) const {
    if (isSelected())
        fill(area, option.palette.color(QPalette::Active, QPalette::Highlight), rowRadius);
    else if (option.state.testFlag(QStyle::State_MouseOver)
             && option.state.testFlag(QStyle::State_Enabled))
        fill(area, veil(option.palette.color(QPalette::Text), hoverStrength), rowRadius);
    if (!option.state.testFlag(QStyle::State_HasFocus)
        || !option.state.testFlag(QStyle::State_KeyboardFocusChange))
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(isSelected() ? strong() : accent(), 1.5));
    const QRectF frame = QRectF(visual(area)).adjusted(2.5, 2.5, -2.5, -2.5);
    painter.drawRoundedRect(frame, rowRadius - 2, rowRadius - 2);
}

void RowPainter::drawText(const QRect& area, const QString& text, const QColor& color,
                          const QFont& font, Qt::Alignment alignment,
                          Qt::TextElideMode elision) const {
    if (area.width() <= 0 || text.isEmpty())
        return;
    // Measuring a long text takes long, and no row is wide enough for more characters than this.
    const QString shown = elision == Qt::ElideRight ? text.left(mostCharacters) : text;
    const QString elided = QFontMetrics(font).elidedText(shown, elision, area.width());
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(visual(area),
                     static_cast<int>(QStyle::visualAlignment(option.direction, alignment))
                         | Qt::AlignVCenter | Qt::TextSingleLine,
                     isolated(elided));
}

void RowPainter::drawSymbol(const QRect& area, std::string_view symbol, const QColor& color) const {
    paintSymbol(painter, visual(area), symbol, color);
}

void RowPainter::drawDot(const QRect& area, const QColor& color) const {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QRectF(visual(area)));
}

void RowPainter::drawHatch(const QRect& area) const {
    const QRect place = visual(area);
    constexpr int step = 6;
    painter.save();
    painter.setClipRect(place);
    painter.setPen(QPen(veil(option.palette.color(QPalette::Text), hatchStrength), 1));
    for (int x = place.left() - place.height(); x < place.right(); x += step)
        painter.drawLine(x, place.bottom() + 1, x + place.height(), place.top());
    painter.restore();
}

void RowPainter::fill(const QRect& area, const QColor& color, double radius) const {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(visual(area), radius, radius);
}

QRect RowPainter::visual(const QRect& area) const {
    return QStyle::visualRect(option.direction, option.rect, area);
}

} // namespace tidemark
