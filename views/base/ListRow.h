#pragma once

#include <QRect>
#include <QString>
#include <optional>
#include <string>

class QFont;

namespace tidemark {

class RowPainter;

/// What a row of a list shows: symbol, title and at the trailing edge a time or a number, and
/// below them a second line.
struct ListRow {
    /// Name of the symbol image.
    std::string symbol;
    QString title;
    QString trailing;
    /// Empty for a row of one line.
    QString below{};
    /// A dot before the symbol; absent in a list whose rows have none.
    std::optional<bool> isMarked{};
    /// A dot before what stands at the trailing edge.
    bool isTrailingMarked = false;

    /// The height of a row of two lines. From the font alone, never from a text: a list has
    /// thousands of rows.
    static int heightOfTwoLines(const QFont& font);
    /// Pixels from the edge of the panel to the texts.
    static int indent(const QFont& font, bool hasMarks);

    void draw(const RowPainter& painter, const QFont& font, const QRect& panel) const;

private:
    /// Returns what is left of the line for the title.
    QRect drawTrailing(const RowPainter& painter, const QFont& font, QRect line) const;
};

} // namespace tidemark
