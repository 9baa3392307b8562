#pragma once

#include <QColor>
#include <QPixmap>
#include <QRect>
#include <string_view>

class QPainter;

namespace tidemark {

/// The image of a symbol in one colour, which follows the palette and a selection. `side` is its
/// width and height in logical pixels, `ratio` the physical ones per logical one. Null for a symbol
/// that is not known.
QPixmap tintedSymbol(std::string_view symbol, int side, const QColor& color, double ratio);

/// Draws it in the middle of `area`.
void paintSymbol(QPainter& painter, const QRect& area, std::string_view symbol,
                 const QColor& color);

} // namespace tidemark
