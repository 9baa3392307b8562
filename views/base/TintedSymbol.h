#pragma once

#include <QColor>
#include <QPixmap>
#include <QRect>
#include <string_view>

class QPainter;

namespace tidemark {

/// The image of a symbol in one colour, such as that of the text beside it. `side` is its width and
/// height in logical pixels, `ratio` the physical ones per logical one. Null for a symbol that is
/// not known.
QPixmap tintedSymbol(std::string_view symbol, int side, const QColor& color, double ratio);

/// Draws the image of a symbol, as large as fits, in the middle of `area`.
void paintSymbol(QPainter& painter, const QRect& area, std::string_view symbol,
                 const QColor& color);

} // namespace tidemark
