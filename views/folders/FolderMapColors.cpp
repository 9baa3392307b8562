#include "views/folders/FolderMapColors.h"

#include <algorithm>
#include <cmath>

namespace tidemark::folderMapColors {

namespace {

using Trend = FolderMap::Trend;

const QColor green(0x3d, 0x9b, 0x62);

/// How much of the text colour is in the surface of a tile without a known change, and of a folder.
constexpr double ofTile = 0.11;
constexpr double ofFolder = 0.045;
/// How much of the colour for growing or shrinking is in the tile with the smallest change.
constexpr double weakest = 0.3;

/// The least contrast at which text keeps its usual colour: between the 4.5 that WCAG 2 asks for,
/// and the 3 that it asks for large text.
constexpr double readable = 4;

/// The relative luminance by WCAG 2.
double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
           + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

} // namespace

QColor mixed(const QColor& below, const QColor& above, double share) {
    const auto part = [&](float a, float b) { return a + (b - a) * static_cast<float>(share); };
    return QColor::fromRgbF(part(below.redF(), above.redF()), part(below.greenF(), above.greenF()),
                            part(below.blueF(), above.blueF()));
}

QColor tile(const QPalette& palette, Trend trend, double strength) {
    const QColor plain = mixed(palette.color(QPalette::Active, QPalette::Base),
                               palette.color(QPalette::Active, QPalette::Text), ofTile);
    const double share = weakest + (1 - weakest) * strength;
    switch (trend) {
    case Trend::grew:
        return mixed(plain, palette.color(QPalette::Active, QPalette::Highlight), share);
    case Trend::shrank:
        return mixed(plain, green, share);
    default:
        return plain;
    }
}

QColor folder(const QPalette& palette) {
    return mixed(palette.color(QPalette::Active, QPalette::Base),
                 palette.color(QPalette::Active, QPalette::Text), ofFolder);
}

QColor textOn(const QPalette& palette, const QColor& surface) {
    const QColor strong = palette.color(QPalette::Active, QPalette::Text);
    const QColor onAccent = palette.color(QPalette::Active, QPalette::HighlightedText);
    if (contrast(strong, surface) >= readable)
        return strong;
    return contrast(strong, surface) >= contrast(onAccent, surface) ? strong : onAccent;
}

QColor patternOn(const QPalette& palette, Trend trend, const QColor& surface) {
    QColor lines = textOn(palette, surface);
    // Dots cover less than lines.
    lines.setAlphaF(trend == Trend::unknown ? 0.5F : 0.14F);
    return lines;
}

Qt::BrushStyle pattern(Trend trend) {
    switch (trend) {
    case Trend::grew:
        return Qt::BDiagPattern;
    case Trend::shrank:
        return Qt::HorPattern;
    case Trend::unknown:
        return Qt::Dense7Pattern;
    case Trend::same:
        break;
    }
    return Qt::NoBrush;
}

} // namespace tidemark::folderMapColors
