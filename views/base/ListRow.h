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
    /// Whether there is a dot before the symbol; absent in a list whose rows never have one.
    std::optional<bool> isMarked{};
    /// Whether there is a dot before what stands at the trailing edge.
    bool isTrailingMarked = false;

    /// The height of a row of two lines. It depends on the font alone, never on a text, because a
    /// list has thousands of rows.
    static int heightOfTwoLines(const QFont& font);
    /// Pixels from the edge of the panel to the texts.
    static int indent(const QFont& font, bool hasMarks);

    void draw(const RowPainter& painter, const QFont& font, const QRect& panel) const;

private:
    /// Returns what is left of the line for the title.
    QRect drawTrailing(const RowPainter& painter, const QFont& font, QRect line) const;
};

} // namespace tidemark
