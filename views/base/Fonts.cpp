#include "views/base/Fonts.h"

#include <QApplication>

namespace tidemark::fonts {

namespace {

constexpr double smallerScale = 0.92;

QFont scaled(QFont font, double factor) {
    font.setPointSizeF(font.pointSizeF() * factor);
    return font;
}

} // namespace

QFont smaller(const QFont& font) {
    return scaled(font, smallerScale);
}

QFont bold(QFont font) {
    font.setBold(true);
    return font;
}

QFont ofApplication(double factor) {
    return scaled(QApplication::font(), factor);
}

} // namespace tidemark::fonts
