#pragma once

#include "core/growth/ChartColumns.h"
#include "core/growth/ChartLayout.h"
#include "core/growth/ChartReading.h"

#include <QFont>
#include <QPalette>
#include <QPixmap>
#include <QRect>
#include <optional>

class QPainter;

namespace tidemark {

/// Draws the parts of a chart. Positions are those of the layout; where the window is laid out from
/// right to left, they are mirrored.
class StorageChartPainter {
public:
    struct Look {
        QPalette palette;
        QFont font;
        Qt::LayoutDirection direction = Qt::LeftToRight;
        QRect area;
    };

    /// The objects that are referred to must outlive this one.
    StorageChartPainter(QPainter& used, const StorageChart& shown, const ChartLayout& placed,
                        Look look);

    /// The size of the chart, and the room that texts need around its plot.
    static ChartLayout::Metrics metrics(const QSize& size, const QFont& font);

    /// Draws the reason why there is no chart.
    void drawNothing(const QString& reason) const;
    /// Draws the surfaces below the lines. Called before `drawGrid`, so that the grid lies over
    /// them.
    void drawAreas() const;
    void drawGrid() const;
    void drawGaps() const;
    void drawBreaks() const;
    void drawFlags() const;
    void drawLines() const;
    void drawMarks(std::optional<std::size_t> emphasized) const;
    /// The name of the subject and its latest size, at the end of the line.
    void drawLatest() const;
    /// The moments that are to be compared, and the time between them.
    void drawChosen(const std::vector<Date>& moments) const;
    void drawCursor(std::size_t point, bool hasFocus) const;
    /// The text beside the cursor.
    void drawReading(const ChartReading& reading, double x) const;

private:
    /// How many pieces of the lines a text in `place` would cover. `place` has the coordinates of
    /// the layout, before mirroring.
    int linesBelow(const QRectF& place) const;
    /// The place beside the cursor at `x` where a text of this size hides the fewest pieces of the
    /// lines; not mirrored.
    QRectF clearestPlace(double x, QSizeF size) const;
    double mirrored(double x) const;
    QPointF at(const ChartLayout::Position& position) const;
    QRect visual(const QRectF& rect) const;
    QColor strong() const;
    QColor dim() const;
    QColor accent() const;
    QColor surface(const QColor& color, double share) const;
    void drawText(const QRectF& rect, Qt::Alignment alignment, const QString& text,
                  const QFont& font, const QColor& color) const;
    void fill(const chartColumns::Run& run, const QColor& color) const;
    QPixmap markImage(double radius, const QColor& color) const;
    void drawMark(double x, const QPixmap& image) const;
    void drawUpright(double x, const QPen& pen, double from) const;

    QPainter& painter;
    const StorageChart& chart;
    const ChartLayout& layout;
    const Look look;
};

} // namespace tidemark
