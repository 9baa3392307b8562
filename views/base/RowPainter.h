#pragma once

#include <QStyleOptionViewItem>
#include <string_view>

class QPainter;

namespace tidemark {

/// Draws the parts of a list's row in the colours of the palette. Areas are given as for a window
/// that is laid out from left to right, and mirrored where it is not.
class RowPainter {
public:
    /// Both arguments outlive this object.
    RowPainter(QPainter& used, const QStyleOptionViewItem& styled);

    bool isSelected() const { return option.state.testFlag(QStyle::State_Selected); }
    QColor strong() const;
    /// The colour of second lines, and of what is repeated in every row.
    QColor dim() const;
    QColor accent() const;

    /// The background of a row that is selected or under the pointer, and the frame of the one that
    /// the keyboard is at.
    void drawPanel(const QRect& area) const;
    /// One line, elided where it does not fit.
    void drawText(const QRect& area, const QString& text, const QColor& color, const QFont& font,
                  Qt::Alignment alignment = Qt::AlignLeading,
                  Qt::TextElideMode elision = Qt::ElideRight) const;
    void drawSymbol(const QRect& area, std::string_view symbol, const QColor& color) const;
    void drawDot(const QRect& area, const QColor& color) const;
    /// Stripes for a time or a place of which nothing is known.
    void drawHatch(const QRect& area) const;
    void fill(const QRect& area, const QColor& color, double radius = 0) const;

private:
    QRect visual(const QRect& area) const;

    QPainter& painter;
    const QStyleOptionViewItem& option;
};

} // namespace tidemark
