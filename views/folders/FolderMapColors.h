#pragma once

#include "core/presentation/FolderMap.h"

#include <QColor>
#include <QPalette>

/// The colours of a map of folder sizes, mixed from those of the palette and a green for what
/// shrank, so that they fit dark and high-contrast palettes.
namespace tidemark::folderMapColors {

/// The mixture of two colours in which `above` has this share, from 0 to 1.
QColor mixed(const QColor& below, const QColor& above, double share);
/// The surface of a tile. `strength` as in `FolderMap::Tile`.
QColor tile(const QPalette& palette, FolderMap::Trend trend, double strength);
/// The surface of a folder around its parts.
QColor folder(const QPalette& palette);
/// The colour of text on a surface: the palette's colour of text if that is readable there, else
/// that or the colour of selected text, whichever has more contrast.
QColor textOn(const QPalette& palette, const QColor& surface);
/// The colour of the pattern on a surface.
QColor patternOn(const QPalette& palette, FolderMap::Trend trend, const QColor& surface);
/// The pattern of a trend, for those who don't see the colours.
Qt::BrushStyle pattern(FolderMap::Trend trend);

} // namespace tidemark::folderMapColors
