#pragma once

#include <QStyleOptionViewItem>
#include <QWidget>

/// The two colours of text. They are always taken from the palette, so that they fit a dark or a
/// high contrast one.
namespace tidemark::textColor {

/// The opacity of the text of a second line.
inline constexpr double dimness = 0.68;

inline QColor dimmed(QColor color) {
    color.setAlphaF(static_cast<float>(color.alphaF() * dimness));
    return color;
}

inline QColor strong(const QStyleOptionViewItem& option) {
    if (option.state & QStyle::State_Selected)
        return option.palette.color(QPalette::HighlightedText);
    // The active colour even in a heading, which counts as disabled because it can't be selected.
    return option.palette.color(QPalette::Active, QPalette::Text);
}

inline QColor dim(const QStyleOptionViewItem& option) {
    return option.state & QStyle::State_Selected ? strong(option) : dimmed(strong(option));
}

/// Gives the text of a widget the colour of second lines.
inline void dim(QWidget& widget) {
    QPalette palette = widget.palette();
    palette.setColor(QPalette::WindowText, dimmed(palette.color(QPalette::Text)));
    widget.setPalette(palette);
}

} // namespace tidemark::textColor
