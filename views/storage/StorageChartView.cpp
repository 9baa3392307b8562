#include "views/storage/StorageChartView.h"

#include "core/base/Text.h"
#include "core/growth/StorageChartText.h"
#include "views/base/ShownText.h"
#include "views/storage/StorageChartPainter.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>
#include <utility>

namespace tidemark {

namespace {

/// How near the pointer has to be to the mark of an event, in pixels.
constexpr double reach = 7;
constexpr std::ptrdiff_t pageSteps = 20;

} // namespace

StorageChartView::StorageChartView(QWidget* parent)
    : QWidget(parent), chart(std::make_shared<StorageChart>()) {
    accessibleParts::install();
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(wordsHere(storageChartText::title));
}

void StorageChartView::present(std::shared_ptr<const StorageChart> shown) {
    if (chart == shown)
        return;
    // The cursor goes to the point that is nearest to the time where it stood.
    const auto stood = current ? std::optional(chart->points[*current].at) : std::nullopt;
    chart = std::move(shown);
    reading.reset();
    current = stood ? chart->nearestPoint(*stood) : std::nullopt;
    const std::string name = oneLine(chart->subject.name);
    setAccessibleDescription(spokenText(storageChartText::summary(*chart, Calendar()), name,
                                        shownFolderName(chart->subject.path, name)));
    lay();
    accessibleParts::announceReset(*this);
}

void StorageChartView::showMoments(const ComparedMoments& marked) {
    moments = marked;
    update();
}

void StorageChartView::setCursor(std::optional<std::size_t> point) {
    if (std::exchange(current, point) == point)
        return;
    update();
    accessibleParts::announceCurrent(*this);
}

void StorageChartView::lay() {
    layout = ChartLayout::of(*chart, StorageChartPainter::metrics(size(), font()), Calendar());
    update();
}

int StorageChartView::partCount() const {
    return static_cast<int>(chart->points.size());
}

QString StorageChartView::partText(int part) const {
    return shownParts(
        storageChartText::sentence(*chart, static_cast<std::size_t>(part), Calendar()), ", ");
}

QRect StorageChartView::partArea(int part) const {
    const auto& point = chart->points[static_cast<std::size_t>(part)];
    const auto x = static_cast<int>(std::lround(leftToRight(layout.x(point.at))));
    const auto y = static_cast<int>(std::lround(layout.y(point.bytes)));
    return {x - 3, y - 3, 7, 7};
}

void StorageChartView::choosePart(int part) {
    setCursor(static_cast<std::size_t>(part));
    Q_EMIT cursorMoved();
}

double StorageChartView::leftToRight(double x) const {
    return layoutDirection() == Qt::RightToLeft ? width() - x : x;
}

void StorageChartView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const StorageChartPainter parts(
        painter, *chart, layout,
        {.palette = palette(), .font = font(), .direction = layoutDirection(), .area = rect()});
    if (chart->points.empty())
        return parts.drawNothing(wordsHere(storageChartText::noPoints));
    const auto atPointer = pointer ? std::optional(layout.dateAt(*pointer)) : std::nullopt;
    const auto gap = atPointer ? chart->gapAt(*atPointer) : std::nullopt;
    const auto point = atPointer && !gap ? chart->nearestPoint(*atPointer) : current;
    std::vector<Date> marked;
    for (const auto& moment : moments.all())
        marked.push_back(moment.at);

    parts.drawAreas();
    parts.drawGrid();
    parts.drawGaps();
    parts.drawBreaks();
    parts.drawFlags();
    parts.drawLines();
    parts.drawLatest();
    parts.drawChosen(marked);
    parts.drawMarks(atPointer ? markNear(*atPointer) : std::nullopt);
    if (point && !gap)
        parts.drawCursor(*point, hasFocus() && point == current);
    if (gap)
        parts.drawReading(readingAt({}, gap), *pointer);
    else if (point)
        parts.drawReading(readingAt(point, {}), layout.x(chart->points[*point].at));
}

/// Made once for each place of the cursor, since formatting dates takes longer than drawing.
const ChartReading& StorageChartView::readingAt(std::optional<std::size_t> point,
                                                std::optional<std::size_t> gap) {
    if (!reading || reading->point != point || reading->gap != gap)
        reading = Reading{point, gap,
                          point ? ChartReading::ofPoint(*chart, *point, Calendar())
                                : ChartReading::ofGap(*chart, *gap, Calendar())};
    return reading->text;
}

void StorageChartView::resizeEvent(QResizeEvent*) {
    lay();
}

void StorageChartView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        lay();
}

void StorageChartView::mouseMoveEvent(QMouseEvent* event) {
    const double x = leftToRight(event->position().x());
    const bool isInside = x >= layout.left - reach && x <= layout.right + reach;
    pointer = isInside ? std::optional(x) : std::nullopt;
    update();
}

void StorageChartView::leaveEvent(QEvent*) {
    pointer.reset();
    update();
}

std::optional<std::size_t> StorageChartView::markNear(Date at) const {
    const double seconds = (layout.through - layout.since) / (layout.right - layout.left) * reach;
    return chart->nearestMark(at, seconds);
}

void StorageChartView::chooseEventAt(Date at) {
    if (const auto mark = markNear(at))
        Q_EMIT eventChosen(chart->marks[*mark].event);
}

bool StorageChartView::isAtPlot(double shownX) const {
    const double x = leftToRight(shownX);
    return x >= layout.left - reach && x <= layout.right + reach;
}

void StorageChartView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !isAtPlot(event->position().x()))
        return;
    const Date at = layout.dateAt(leftToRight(event->position().x()));
    setCursor(chart->nearestPoint(at));
    Q_EMIT cursorMoved();
    chooseEventAt(at);
}

void StorageChartView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && isAtPlot(event->position().x()) && current)
        Q_EMIT markRequested();
}

void StorageChartView::move(std::ptrdiff_t steps) {
    pointer.reset();
    if (const auto next = chart->moved(current, steps)) {
        setCursor(next);
        Q_EMIT cursorMoved();
    }
    update();
}

void StorageChartView::keyPressEvent(QKeyEvent* event) {
    const std::ptrdiff_t onward = layoutDirection() == Qt::RightToLeft ? -1 : 1;
    switch (event->key()) {
    case Qt::Key_Left:
        return move(-onward);
    case Qt::Key_Right:
        return move(onward);
    case Qt::Key_PageUp:
        return move(-pageSteps);
    case Qt::Key_PageDown:
        return move(pageSteps);
    case Qt::Key_Home:
    case Qt::Key_End:
        pointer.reset();
        if (partCount() > 0)
            choosePart(event->key() == Qt::Key_Home ? 0 : partCount() - 1);
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (current)
            chooseEventAt(chart->points[*current].at);
        return;
    case Qt::Key_Space:
        if (current)
            Q_EMIT markRequested();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void StorageChartView::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    accessibleParts::announceCurrent(*this);
    update();
}

void StorageChartView::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

} // namespace tidemark
