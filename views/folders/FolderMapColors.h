#pragma once

#include "core/presentation/FolderMap.h"

#include <QColor>
#include <QPalette>

/// The colours of a map of folder sizes, mixed from those of the palette, so that a dark or a high
/// contrast one is followed.
namespace tidemark::folderMapColors {

/// `share` of one colour in another, from 0 to 1.
QColor mixed(const QColor& below, const QColor& above, double share);
/// The surface of a tile. `strength` as in `FolderMap::Tile`.
QColor tile(const QPalette& palette, FolderMap::Trend trend, double strength);
/// The surface of a folder around its parts.
QColor folder(const QPalette& palette);
/// The colour of text on a surface: that of texts or that of selected ones, whichever is readable.
QColor textOn(const QPalette& palette, const QColor& surface);
/// The colour of the pattern on a surface.
QColor patternOn(const QPalette& palette, FolderMap::Trend trend, const QColor& surface);
/// The pattern of a trend, for those who don't see the colours.
Qt::BrushStyle pattern(FolderMap::Trend trend);

} // namespace tidemark::folderMapColors
