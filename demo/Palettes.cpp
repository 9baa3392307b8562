#include "demo/Palettes.h"

namespace tidemark::demo::palettes {

namespace {

struct Colors {
    QColor window;
    QColor base;
    QColor button;
    QColor text;
    QColor line;
    QColor accent;
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
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, colors.accent);
    QColor dim = colors.text;
    dim.setAlphaF(0.62F);
    palette.setColor(QPalette::PlaceholderText, dim);
    dim.setAlphaF(0.4F);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, dim);
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

} // namespace tidemark::demo::palettes
