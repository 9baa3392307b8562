#pragma once

#include <QStyleOptionViewItem>
#include <QWidget>

/// The two colours of text, by the palette and never by name, so that a dark or a high contrast
/// palette is followed.
namespace tidemark::textColor {

/// How much of the text colour a second line has.
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

/// Makes the text of a widget a second line.
inline void dim(QWidget& widget) {
    QPalette palette = widget.palette();
    palette.setColor(QPalette::WindowText, dimmed(palette.color(QPalette::Text)));
    widget.setPalette(palette);
}

} // namespace tidemark::textColor
