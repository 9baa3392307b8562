#include "views/base/ListRow.h"

#include "views/base/Fonts.h"
#include "views/base/RowPainter.h"

namespace tidemark {

namespace {

/// The sizes of the parts of a row in pixels, which follow from its font.
struct Lengths {
    explicit Lengths(const QFont& font) : line(QFontMetrics(font).height()) {}

    int line;
    int pad() const { return line / 2; }
    int symbol() const { return line + 4; }
    int dot() const { return line / 3; }
};

} // namespace

int ListRow::heightOfTwoLines(const QFont& font) {
    const Lengths lengths(font);
    return 2 * lengths.line + 2 * lengths.pad() + 4;
}

int ListRow::indent(const QFont& font, bool hasMarks) {
    const Lengths lengths(font);
    return 2 * lengths.pad() + lengths.symbol() + (hasMarks ? lengths.dot() : 0);
}

QRect ListRow::drawTrailing(const RowPainter& painter, const QFont& font, QRect line) const {
    const Lengths lengths(font);
    if (!trailing.isEmpty()) {
        const QFont small = fonts::smaller(font);
        painter.drawText(line, trailing, painter.dim(), small, Qt::AlignTrailing);
        line.adjust(0, 0, -QFontMetrics(small).horizontalAdvance(trailing) - lengths.pad(), 0);
    }
    if (isTrailingMarked) {
        const int dot = lengths.dot();
        painter.drawDot({line.right() - dot, line.center().y() - dot / 2, dot, dot},
                        painter.accent());
        line.adjust(0, 0, -dot, 0);
    }
    return line.adjusted(0, 0, -lengths.pad(), 0);
}

void ListRow::draw(const RowPainter& painter, const QFont& font, const QRect& panel) const {
    const Lengths lengths(font);
    if (isMarked.value_or(false))
        painter.drawDot({panel.left() + lengths.pad() * 2 / 3,
                         panel.center().y() - lengths.dot() / 2 + 1, lengths.dot(), lengths.dot()},
                        painter.accent());
    const int texts = indent(font, isMarked.has_value());
    painter.drawSymbol({panel.left() + texts - lengths.symbol() - lengths.pad(), panel.top(),
                        lengths.symbol(), panel.height()},
                       symbol, painter.strong());
    QRect first = panel.adjusted(texts, 0, -lengths.pad() - 2, 0);
    first.setHeight(lengths.line + 2);
    first.moveTop(below.isEmpty() ? panel.center().y() - first.height() / 2
                                  : panel.center().y() - first.height() + 1);
    QRect second = first;
    second.setTop(first.bottom() + 1);
    second.setHeight(lengths.line);
    painter.drawText(drawTrailing(painter, font, first), title, painter.strong(), font);
    painter.drawText(second, below, painter.dim(), fonts::smaller(font));
}

} // namespace tidemark
