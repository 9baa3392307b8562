#pragma once

#include "core/presentation/FolderMapLayout.h"

#include <QFont>
#include <QPalette>
#include <QRect>

class QPainter;

namespace tidemark {

/// Draws the tiles of a map.
class FolderMapPainter {
public:
    /// How a map is drawn.
    struct Look {
        QPalette palette;
        QFont font;
        Qt::LayoutDirection direction = Qt::LeftToRight;
        /// True when changes are shown.
        bool isCompared = true;
    };

    /// `used` outlives it.
    FolderMapPainter(QPainter& used, Look look);

    /// The height of the strip with the name of a folder.
    static int headerHeight(const QFont& font);

    void draw(const FolderMapLayout::Placed& placed, const QRect& area, bool isHovered) const;
    /// The frame of the chosen tile.
    void drawFrame(const QRect& area, bool hasFocus) const;

private:
    void drawSurface(const FolderMapLayout::Placed& placed, const QRect& area,
                     const QColor& surface) const;
    void drawTexts(const FolderMap::Tile& tile, const QRect& area, const QColor& surface) const;
    void drawHeader(const FolderMap::Tile& tile, const QRect& area) const;
    void drawLine(const QRect& area, const QString& text, const QFont& font,
                  const QColor& color) const;
    QString sizeText(const FolderMap::Tile& tile, const QFont& font, int width) const;

    QPainter& painter;
    const Look look;
};

/// The name of a tile in the language of the user.
QString folderTileName(const FolderMap::Tile& tile);

} // namespace tidemark
