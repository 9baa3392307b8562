#include "views/storage/StorageChartPainter.h"

#include "core/base/Text.h"
#include "views/base/Fonts.h"
#include "views/base/ShownText.h"
#include "views/base/TextColor.h"
#include "views/base/TintedSymbol.h"
#include "views/folders/FolderMapColors.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tidemark {

namespace {

constexpr int padding = 8;
constexpr int lineWidth = 2;
constexpr double dotRadius = 4;
constexpr double pointRadius = 2.5;
constexpr double markRadius = 3.5;
constexpr double markDistance = 6;
constexpr double areaStrength = 0.1;
constexpr double cursorStrength = 0.9;
constexpr float hatchStrength = 0.16F;
constexpr float gridStrength = 0.09F;
constexpr float chosenStrength = 0.08F;
constexpr double cornerRadius = 6;
/// A narrower gap is only hatched, and a break with less room after it is only a line; the cursor
/// and the table have the texts.
constexpr double narrowestGapText = 64;

QColor veil(QColor color, float strength) {
    color.setAlphaF(strength);
    return color;
}

} // namespace

StorageChartPainter::StorageChartPainter(QPainter& used, const StorageChart& shown,
                                         const ChartLayout& placed, Look how)
    : painter(used), chart(shown), layout(placed), look(std::move(how)) {
    painter.setRenderHint(QPainter::Antialiasing);
}

ChartLayout::Metrics StorageChartPainter::metrics(const QSize& size, const QFont& font) {
    const QFontMetrics text(font);
    const QFontMetrics small(fonts::smaller(font));
    return {.width = static_cast<double>(size.width()),
            .height = static_cast<double>(size.height()),
            .leading = static_cast<double>(small.horizontalAdvance(QStringLiteral("000.00 GB")) + 20
                                           + padding),
            .trailing =
                static_cast<double>(text.horizontalAdvance(QStringLiteral("Free space ")) + 30),
            .top = static_cast<double>(text.height() + 12),
            .bottom = static_cast<double>(text.height() + 12),
            .dateWidth =
                static_cast<double>(small.horizontalAdvance(QStringLiteral("30 Sep 2026")) + 24),
            .sizeHeight = 2.6 * text.height()};
}

double StorageChartPainter::mirrored(double x) const {
    return look.direction == Qt::RightToLeft ? look.area.width() - x : x;
}

QPointF StorageChartPainter::at(const ChartLayout::Position& position) const {
    return {mirrored(position.x), position.y};
}

QRect StorageChartPainter::visual(const QRectF& rect) const {
    return QStyle::visualRect(look.direction, look.area, rect.toRect());
}

QColor StorageChartPainter::strong() const {
    return look.palette.color(QPalette::Active, QPalette::Text);
}

QColor StorageChartPainter::dim() const {
    return textColor::dimmed(strong());
}

QColor StorageChartPainter::accent() const {
    return look.palette.color(QPalette::Active, QPalette::Highlight);
}

/// The colour mixed with the background, instead of a transparent one: Qt hands each high and
/// translucent rectangle to a pool of threads and waits for it, which takes many times as long as
/// drawing.
QColor StorageChartPainter::surface(const QColor& color, double share) const {
    return folderMapColors::mixed(look.palette.color(QPalette::Active, QPalette::Base), color,
                                  share);
}

void StorageChartPainter::drawText(const QRectF& rect, Qt::Alignment alignment, const QString& text,
                                   const QFont& font, const QColor& color) const {
    const QRect place = visual(rect);
    const QString elided = QFontMetrics(font).elidedText(text, Qt::ElideRight, place.width());
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(place,
                     static_cast<int>(QStyle::visualAlignment(look.direction, alignment))
                         | Qt::TextSingleLine,
                     isolated(elided));
}

void StorageChartPainter::drawUpright(double x, const QPen& pen, double from) const {
    // On the middle of a pixel, or it would be two pixels wide and pale.
    const double sharp = std::floor(mirrored(x)) + 0.5;
    painter.setPen(pen);
    painter.drawLine(QPointF(sharp, from), QPointF(sharp, layout.bottom));
}

void StorageChartPainter::drawNothing(const QString& reason) const {
    painter.setFont(look.font);
    painter.setPen(dim());
    painter.drawText(look.area.adjusted(40, 0, -40, 0), Qt::AlignCenter | Qt::TextWordWrap,
                     isolated(reason));
}

void StorageChartPainter::drawGrid() const {
    const QFont small = fonts::smaller(look.font);
    const double line = QFontMetrics(small).height();
    for (const auto& [y, label] : layout.sizes) {
        const double sharp = std::floor(y) + 0.5;
        painter.setPen(QPen(veil(strong(), gridStrength), 1));
        painter.drawLine(QPointF(mirrored(layout.left), sharp),
                         QPointF(mirrored(layout.right), sharp));
        drawText({20, y - line / 2, layout.left - 20 - padding, line},
                 Qt::AlignTrailing | Qt::AlignVCenter, shownText(label), small, dim());
    }
    for (const auto& [x, label] : layout.dates) {
        const double width =
            QFontMetrics(small).horizontalAdvance(QString::fromStdString(label)) + 4;
        if (x + width / 2 > layout.right + 30)
            continue;
        painter.setPen(QPen(veil(strong(), 0.35F), 1));
        const double sharp = std::floor(mirrored(x)) + 0.5;
        painter.drawLine(QPointF(sharp, layout.bottom), QPointF(sharp, layout.bottom + 4));
        drawText({x - width / 2, layout.bottom + 6, width, line}, Qt::AlignHCenter | Qt::AlignTop,
                 QString::fromStdString(label), small, dim());
    }
    painter.setPen(QPen(veil(strong(), 0.35F), 1));
    painter.drawLine(QPointF(mirrored(layout.left), std::floor(layout.bottom) + 0.5),
                     QPointF(mirrored(layout.right), std::floor(layout.bottom) + 0.5));
    if (!layout.isCut())
        return;
    // Two strokes through the axis of sizes, where the part below is left out.
    painter.setPen(QPen(dim(), 1.3));
    for (const double offset : {8.0, 12.0})
        painter.drawLine(at({layout.left - 5, layout.bottom - offset + 3}),
                         at({layout.left + 5, layout.bottom - offset - 3}));
}

void StorageChartPainter::drawGaps() const {
    const QFont small = fonts::smaller(look.font);
    const QFontMetrics text(small);
    for (const auto& gap : chart.gaps) {
        const double from = std::max(layout.left, layout.x(gap.start));
        const double to = std::min(layout.right, layout.x(gap.end));
        if (to - from < 1)
            continue;
        const QRect area = visual({from, layout.top, to - from, layout.bottom - layout.top});
        constexpr int step = 7;
        painter.save();
        painter.setClipRect(area);
        painter.setPen(QPen(veil(strong(), hatchStrength), 1));
        for (int x = area.left() - area.height(); x < area.right(); x += step)
            painter.drawLine(x, area.bottom() + 1, x + area.height(), area.top());
        painter.restore();
        if (to - from < narrowestGapText)
            continue;
        const QString words = isolated(shownText(gap.text));
        const QRect room(0, 0, area.width() - 2 * padding, area.height());
        QRect label = text.boundingRect(room, Qt::AlignCenter | Qt::TextWordWrap, words);
        label = label.adjusted(-padding, -4, padding, 4);
        label.moveCenter(area.center());
        painter.setPen(Qt::NoPen);
        painter.setBrush(look.palette.color(QPalette::Active, QPalette::Base));
        painter.drawRoundedRect(label, 4, 4);
        painter.setPen(dim());
        painter.setFont(small);
        painter.drawText(label, Qt::AlignCenter | Qt::TextWordWrap, words);
    }
}

void StorageChartPainter::drawBreaks() const {
    const QFont small = fonts::smaller(look.font);
    const double line = QFontMetrics(small).height();
    for (std::size_t i = 0; i < chart.breaks.size(); ++i) {
        const double x = layout.x(chart.breaks[i].at);
        drawUpright(x, QPen(dim(), 1, Qt::DashLine), layout.top);
        const double next =
            i + 1 < chart.breaks.size() ? layout.x(chart.breaks[i + 1].at) : layout.right;
        if (next - x > narrowestGapText)
            drawText({x + 5, layout.bottom - line - 14, next - x - 10, line},
                     Qt::AlignLeading | Qt::AlignVCenter, shownText(chart.breaks[i].text), small,
                     dim());
    }
}

void StorageChartPainter::drawFlags() const {
    const QFont small = fonts::smaller(look.font);
    const int line = QFontMetrics(small).height();
    const int middle = line / 2;
    for (std::size_t i = 0; i < chart.flags.size(); ++i) {
        const double x = layout.x(chart.flags[i].at);
        drawUpright(x, QPen(dim(), 1, Qt::DotLine), 4 + middle);
        const QRect symbol = visual({x, 2, static_cast<double>(line), static_cast<double>(line)});
        paintSymbol(painter, symbol, "flag", strong());
        const double next =
            i + 1 < chart.flags.size() ? layout.x(chart.flags[i + 1].at) : look.area.width();
        const double room = next - x - line - 10;
        if (room > 24)
            drawText({x + line + 3, 2, room, static_cast<double>(line)},
                     Qt::AlignLeading | Qt::AlignVCenter,
                     QString::fromStdString(oneLine(chart.flags[i].name)), small, dim());
    }
}

void StorageChartPainter::drawAreas() const {
    const QColor color = surface(accent(), areaStrength);
    const auto bottom = static_cast<int>(std::lround(layout.bottom));
    for (const auto& line : layout.lines) {
        // The last stroke of a line is drawn beyond its last point; the surface ends at the point.
        const auto end = static_cast<int>(std::lround(line.back().x));
        for (const auto& run : chartColumns::of(line, lineWidth))
            fill({run.left, std::min(run.right, end), run.bottom, bottom}, color);
    }
}

void StorageChartPainter::drawLines() const {
    for (const auto& line : layout.lines)
        for (const auto& run : chartColumns::of(line, lineWidth))
            fill(run, accent());
    painter.setPen(Qt::NoPen);
    painter.setBrush(accent());
    for (const auto& line : layout.lines)
        // Captures within seconds make a line that is too short to be seen.
        if (line.back().x - line.front().x < 2 * pointRadius)
            for (const auto& end : {line.front(), line.back()})
                painter.drawEllipse(at(end), pointRadius, pointRadius);
}

/// Fills the run as a rectangle of whole pixels, which is drawn faster than a path and is as sharp.
void StorageChartPainter::fill(const chartColumns::Run& run, const QColor& color) const {
    if (run.right > run.left && run.bottom > run.top)
        painter.fillRect(QStyle::visualRect(
                             look.direction, look.area,
                             QRect(run.left, run.top, run.right - run.left, run.bottom - run.top)),
                         color);
}

void StorageChartPainter::drawMarks(std::optional<std::size_t> emphasized) const {
    const QPixmap mark = markImage(markRadius, strong());
    double last = -markDistance;
    for (std::size_t i = 0; i < chart.marks.size(); ++i) {
        const double x = layout.x(chart.marks[i].event->timestamp);
        // Where many events are near to each other, one mark stands for them.
        if (i == emphasized || std::abs(x - last) < markDistance)
            continue;
        last = x;
        drawMark(x, mark);
    }
    if (emphasized)
        drawMark(layout.x(chart.marks[*emphasized].event->timestamp),
                 markImage(markRadius + 2, accent()));
}

/// The image of a mark. It is drawn once for all marks, because a chart has hundreds of them.
QPixmap StorageChartPainter::markImage(double radius, const QColor& color) const {
    const double side = 2 * radius + 3;
    const double ratio = painter.device()->devicePixelRatioF();
    QPixmap image((QSizeF(side, side) * ratio).toSize());
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter drawing(&image);
    drawing.setRenderHint(QPainter::Antialiasing);
    drawing.setPen(QPen(look.palette.color(QPalette::Active, QPalette::Base), 1.5));
    drawing.setBrush(color);
    drawing.drawEllipse(QPointF(side / 2, side / 2), radius, radius);
    return image;
}

void StorageChartPainter::drawMark(double x, const QPixmap& image) const {
    const QSizeF size = image.deviceIndependentSize();
    painter.drawPixmap(at({x, layout.bottom}) - QPointF(size.width() / 2, size.height() / 2),
                       image);
}

void StorageChartPainter::drawLatest() const {
    if (chart.points.empty())
        return;
    const auto& last = chart.points.back();
    const double x = layout.x(last.at);
    const double y = layout.y(last.bytes);
    painter.setPen(QPen(look.palette.color(QPalette::Active, QPalette::Base), 1.5));
    painter.setBrush(accent());
    painter.drawEllipse(at({x, y}), dotRadius, dotRadius);
    const double line = QFontMetrics(look.font).height();
    const double room = look.area.width() - layout.right - 2 * padding - 4;
    const double first = std::clamp(y - line, layout.top - 4, layout.bottom - 2 * line);
    const QRectF name(layout.right + padding + 4, first, room, line);
    drawText(name, Qt::AlignLeading | Qt::AlignVCenter,
             shownFolderName(chart.subject.path, oneLine(chart.subject.name)), look.font, strong());
    drawText(name.translated(0, line), Qt::AlignLeading | Qt::AlignVCenter,
             wordsHere(byteString(last.bytes)), fonts::bold(look.font), strong());
}

void StorageChartPainter::drawChosen(const std::vector<Date>& moments) const {
    if (moments.size() == 2) {
        const double from =
            std::clamp(layout.x(std::min(moments[0], moments[1])), layout.left, layout.right);
        const double to =
            std::clamp(layout.x(std::max(moments[0], moments[1])), layout.left, layout.right);
        painter.fillRect(visual({from, layout.top, to - from, layout.bottom - layout.top}),
                         veil(accent(), chosenStrength));
    }
    const QFont small = fonts::bold(fonts::smaller(look.font));
    for (std::size_t i = 0; i < moments.size(); ++i) {
        const double x = layout.x(moments[i]);
        if (x < layout.left - 1 || x > layout.right + 1)
            continue;
        drawUpright(x, QPen(strong(), 1.5), layout.top);
        const double side = QFontMetrics(small).height() + 2;
        const QRect badge = visual({x - side / 2, layout.top - side / 2, side, side});
        painter.setPen(Qt::NoPen);
        painter.setBrush(strong());
        painter.drawEllipse(badge);
        painter.setPen(look.palette.color(QPalette::Active, QPalette::Base));
        painter.setFont(small);
        painter.drawText(badge, Qt::AlignCenter, QString::number(i + 1));
    }
}

void StorageChartPainter::drawCursor(std::size_t point, bool hasFocus) const {
    const auto& shown = chart.points[point];
    const double x = layout.x(shown.at);
    const int column = static_cast<int>(std::floor(mirrored(x)));
    const auto top = static_cast<int>(layout.top);
    painter.fillRect(QRect(column, top, 1, static_cast<int>(layout.bottom) - top),
                     surface(accent(), cursorStrength));
    painter.setPen(QPen(look.palette.color(QPalette::Active, QPalette::Base), 2));
    painter.setBrush(hasFocus ? strong() : accent());
    painter.drawEllipse(at({x, layout.y(shown.bytes)}), dotRadius + 1.5, dotRadius + 1.5);
}

int StorageChartPainter::linesBelow(const QRectF& place) const {
    int count = 0;
    for (const auto& line : layout.lines)
        for (std::size_t i = 0; i < line.size(); ++i) {
            const auto& [x1, y1] = line[i];
            const auto& [x2, y2] = line[std::min(i + 1, line.size() - 1)];
            const QRectF piece(QPointF(std::min(x1, x2), std::min(y1, y2)),
                               QPointF(std::max(x1, x2) + 1, std::max(y1, y2) + 1));
            count += piece.intersects(place) ? 1 : 0;
        }
    return count;
}

QRectF StorageChartPainter::clearestPlace(double x, QSizeF size) const {
    const double high = layout.top + 6;
    const double low = layout.bottom - size.height() - 12;
    const double after = std::min(x + 14, layout.right - size.width());
    const double before = std::max(layout.left, x - 14 - size.width());
    QRectF best;
    int least = std::numeric_limits<int>::max();
    for (const QPointF corner :
         {QPointF(after, high), QPointF(before, high), QPointF(after, low), QPointF(before, low)}) {
        const QRectF place(corner, size);
        const bool coversCursor = place.left() <= x && place.right() >= x;
        const int lines = linesBelow(place) + (coversCursor ? 1000 : 0);
        if (lines >= least)
            continue;
        least = lines;
        best = place;
    }
    return best;
}

void StorageChartPainter::drawReading(const ChartReading& reading, double x) const {
    const QFont heading = fonts::bold(look.font);
    const QFont small = fonts::smaller(look.font);
    const int headingHeight = QFontMetrics(heading).height();
    const int line = QFontMetrics(small).height() + 1;
    const QString title = shownText(reading.title);
    QStringList lines;
    // The first line never has a name in it; in the reading of a point it is a size and a time. The
    // other lines can have names.
    for (const auto& text : reading.lines)
        lines += lines.isEmpty() ? shownParts(text, " · ") : shownText(text);
    int width = QFontMetrics(heading).horizontalAdvance(title);
    for (const QString& text : lines)
        width = std::max(width, QFontMetrics(small).horizontalAdvance(text));
    width = std::min(width + 2 * padding + 12, static_cast<int>(layout.right - layout.left));
    const int height = headingHeight + line * static_cast<int>(lines.size()) + 2 * padding - 2;
    const QRectF place = clearestPlace(x, QSizeF(width, height));
    const QRect panel = visual(place);
    painter.setPen(QPen(look.palette.color(QPalette::Active, QPalette::Midlight), 1));
    painter.setBrush(look.palette.color(QPalette::Active, QPalette::Base));
    painter.drawRoundedRect(QRectF(panel).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius,
                            cornerRadius);
    QRectF row(place.left() + padding + 2, place.top() + padding - 1, width - 2 * padding - 4,
               headingHeight);
    drawText(row, Qt::AlignLeading | Qt::AlignVCenter, title, heading, strong());
    row.translate(0, headingHeight);
    row.setHeight(line);
    for (const QString& text : lines) {
        drawText(row, Qt::AlignLeading | Qt::AlignVCenter, text, small, dim());
        row.translate(0, line);
    }
}

} // namespace tidemark
