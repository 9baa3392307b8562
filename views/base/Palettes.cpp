#include "views/base/Palettes.h"

namespace tidemark::palettes {

namespace {

struct Colors {
    QColor window;
    QColor base;
    QColor button;
    QColor text;
    QColor line;
    QColor accent;
    QColor onAccent = Qt::white;
    /// The share of the text colour in the text of disabled controls, and in hints in empty fields.
    double disabledStrength = 0.4;
    double hintStrength = 0.62;
};

QPalette made(const Colors& colors) {
    QPalette palette(colors.button, colors.window);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::BrightText})
        palette.setColor(role, colors.text);
    palette.setColor(QPalette::Base, colors.base);
    palette.setColor(QPalette::AlternateBase, colors.window);
    palette.setColor(QPalette::ToolTipBase, colors.base);
    palette.setColor(QPalette::Midlight, colors.line);
    palette.setColor(QPalette::Highlight, colors.accent);
    palette.setColor(QPalette::HighlightedText, colors.onAccent);
    palette.setColor(QPalette::Link, colors.accent);
    const auto faded = [&](double strength) {
        QColor color = colors.text;
        color.setAlphaF(static_cast<float>(strength));
        return color;
    };
    palette.setColor(QPalette::PlaceholderText, faded(colors.hintStrength));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faded(colors.disabledStrength));
    return palette;
}

} // namespace

QPalette light() {
    return made({.window = 0xf3f4f6,
                 .base = 0xffffff,
                 .button = 0xf7f8f9,
                 .text = 0x1d1f24,
                 .line = 0xdcdee2,
                 .accent = 0x2f6fb7});
}

QPalette dark() {
    return made({.window = 0x26272b,
                 .base = 0x1d1e21,
                 .button = 0x35373c,
                 .text = 0xeef0f2,
                 .line = 0x3a3c41,
                 .accent = 0x3f74b5});
}

QPalette lightHighContrast() {
    return made({.window = 0xffffff,
                 .base = 0xffffff,
                 .button = 0xffffff,
                 .text = Qt::black,
                 .line = Qt::black,
                 .accent = 0x00319c,
                 .disabledStrength = 0.6,
                 .hintStrength = 0.8});
}

QPalette darkHighContrast() {
    return made({.window = Qt::black,
                 .base = Qt::black,
                 .button = Qt::black,
                 .text = 0xffffff,
                 .line = 0xffffff,
                 .accent = 0xffd500,
                 .onAccent = Qt::black,
                 .disabledStrength = 0.6,
                 .hintStrength = 0.8});
}

} // namespace tidemark::palettes
