#include "views/folders/FolderMapPainter.h"

#include "views/base/Fonts.h"
#include "views/base/ShownText.h"
#include "views/base/TextColor.h"
#include "views/folders/FolderMapColors.h"

#include <QCoreApplication>
#include <QPainter>
#include <algorithm>
#include <utility>

namespace tidemark {

namespace {

using Tile = FolderMap::Tile;
using Trend = FolderMap::Trend;
namespace colors = folderMapColors;

constexpr int tilePadding = 7;
/// The least width for texts, in pixels. A tile with less has none, because most names would be cut
/// to nothing.
constexpr int narrowestText = 44;
/// A smaller tile has neither round corners nor a pattern.
constexpr int smallestPattern = 14;
constexpr double tileRadius = 4;
constexpr double hoverStrength = 0.1;

/// The sign of a trend, for readers who can’t see the colours.
QString signOf(Trend trend) {
    return trend == Trend::grew     ? QStringLiteral("▲ ")
           : trend == Trend::shrank ? QStringLiteral("▼ ")
                                    : QString();
}

/// The area that is painted. Around it a pixel of the background stays free; beside a small area,
/// only at its right and below it.
QRect spaced(const QRect& area) {
    return area.width() > 6 && area.height() > 6 ? area.adjusted(1, 1, -1, -1)
                                                 : area.adjusted(0, 0, -1, -1);
}

} // namespace

QString folderTileName(const FolderMap::Tile& tile) {
    const auto text = [](const char* source, int count) {
        return QCoreApplication::translate("FolderMap", source, nullptr, count);
    };
    if (!tile.name.empty())
        return shownFolderName(tile.id, tile.name);
    if (tile.items == 0)
        return text(QT_TRANSLATE_NOOP("FolderMap", "Not listed"), -1);
    return tile.items == 1
               ? text(QT_TRANSLATE_NOOP("FolderMap", "1 smaller item"), -1)
               : text(QT_TRANSLATE_NOOP("FolderMap", "%1 smaller items"), -1).arg(tile.items);
}

FolderMapPainter::FolderMapPainter(QPainter& used, Look how)
    : painter(used), look(std::move(how)) {}

int FolderMapPainter::headerHeight(const QFont& font) {
    return QFontMetrics(font).height() + tilePadding;
}

void FolderMapPainter::draw(const FolderMapLayout::Placed& placed, const QRect& whole,
                            bool isHovered) const {
    const QRect area = spaced(whole);
    QColor surface = placed.isOpen
                         ? colors::folder(look.palette)
                         : colors::tile(look.palette, placed.tile.trend, placed.tile.strength);
    if (isHovered)
        surface = colors::mixed(surface, look.palette.color(QPalette::Active, QPalette::Text),
                                hoverStrength);
    drawSurface(placed, area, surface);
    if (placed.isOpen)
        drawHeader(placed.tile, area);
    else
        drawTexts(placed.tile, area, surface);
}

void FolderMapPainter::drawSurface(const FolderMapLayout::Placed& placed, const QRect& area,
                                   const QColor& surface) const {
    if (std::min(area.width(), area.height()) < smallestPattern)
        return painter.fillRect(area, surface);
    painter.setPen(Qt::NoPen);
    painter.setBrush(surface);
    painter.drawRoundedRect(area, tileRadius, tileRadius);
    const Trend trend = placed.tile.trend;
    const Qt::BrushStyle style = colors::pattern(trend);
    if (!look.isCompared || style == Qt::NoBrush || placed.isOpen)
        return;
    painter.setBrush(QBrush(colors::patternOn(look.palette, trend, surface), style));
    painter.drawRoundedRect(area, tileRadius, tileRadius);
}

void FolderMapPainter::drawTexts(const Tile& tile, const QRect& area, const QColor& surface) const {
    const int line = QFontMetrics(look.font).height();
    QRect first = area.adjusted(tilePadding, tilePadding - 2, -tilePadding, 0);
    first.setHeight(line);
    if (first.width() < narrowestText || first.bottom() > area.bottom() - 2)
        return;
    const QColor strong = colors::textOn(look.palette, surface);
    drawLine(first, folderTileName(tile), look.font, strong);
    const QFont small = fonts::smaller(look.font);
    first.translate(0, line);
    if (first.bottom() > area.bottom() - 2)
        return;
    QColor dim = strong;
    dim.setAlphaF(0.9F);
    const QString size = sizeText(tile, small, first.width());
    // A number that is cut reads like another one.
    if (QFontMetrics(small).horizontalAdvance(size) < first.width())
        drawLine(first, size, small, dim);
}

void FolderMapPainter::drawHeader(const Tile& tile, const QRect& area) const {
    QRect strip = area.adjusted(tilePadding, 1, -tilePadding, 0);
    strip.setHeight(headerHeight(look.font) - 2);
    const QColor strong = look.palette.color(QPalette::Active, QPalette::Text);
    const QFont heading = fonts::bold(look.font);
    const QFont small = fonts::smaller(look.font);
    const QString name = folderTileName(tile);
    const int nameWidth = QFontMetrics(heading).horizontalAdvance(name) + tilePadding;
    const QString size = sizeText(tile, small, strip.width() - nameWidth);
    drawLine(strip, name, heading, strong);
    const int sizeWidth = QFontMetrics(small).horizontalAdvance(size);
    if (sizeWidth > strip.width() - nameWidth)
        return;
    QRect rest = strip;
    if (look.direction == Qt::RightToLeft)
        rest.setRight(strip.right() - nameWidth);
    else
        rest.setLeft(strip.left() + nameWidth);
    drawLine(rest, size, small, textColor::dimmed(strong));
}

void FolderMapPainter::drawLine(const QRect& area, const QString& text, const QFont& font,
                                const QColor& color) const {
    const QString elided = QFontMetrics(font).elidedText(text, Qt::ElideRight, area.width());
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(area,
                     static_cast<int>(QStyle::visualAlignment(look.direction, Qt::AlignLeading))
                         | Qt::AlignVCenter | Qt::TextSingleLine,
                     isolated(elided));
}

/// The size, followed by the change, or by its sign alone, where there is room for that.
QString FolderMapPainter::sizeText(const Tile& tile, const QFont& font, int width) const {
    QString size = wordsHere(sizeOf(tile));
    const QString change = shownText(changeOf(tile));
    if (change.isEmpty() || !look.isCompared)
        return size;
    QString both = size + QStringLiteral("  ") + signOf(tile.trend) + change;
    if (QFontMetrics(font).horizontalAdvance(both) <= width)
        return both;
    const QString marked = size + QStringLiteral(" ") + signOf(tile.trend).trimmed();
    return QFontMetrics(font).horizontalAdvance(marked) <= width ? marked : size;
}

void FolderMapPainter::drawFrame(const QRect& area, bool hasFocus) const {
    const QRectF frame = QRectF(spaced(area)).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setBrush(Qt::NoBrush);
    // Two lines, since one of them would be lost on a tile of its own colour.
    painter.setPen(
        QPen(look.palette.color(QPalette::Active, QPalette::Text), hasFocus ? 3.0 : 2.0));
    painter.drawRoundedRect(frame, tileRadius, tileRadius);
    painter.setPen(QPen(look.palette.color(QPalette::Active, QPalette::Base), 1.0));
    painter.drawRoundedRect(frame.adjusted(2, 2, -2, -2), tileRadius - 2, tileRadius - 2);
}

} // namespace tidemark
