#include "views/folders/FolderMapView.h"

#include "views/base/ShownText.h"
#include "views/base/TextColor.h"
#include "views/folders/FolderMapPainter.h"

#include <QEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <cmath>
#include <utility>

namespace tidemark {

namespace {

/// Rounded to whole pixels, so that neighbours share their edges.
QRect pixels(const TreemapRectangle& area) {
    const auto left = static_cast<int>(std::lround(area.x));
    const auto top = static_cast<int>(std::lround(area.y));
    return QRect(QPoint(left, top), QPoint(static_cast<int>(std::lround(area.right())) - 1,
                                           static_cast<int>(std::lround(area.bottom())) - 1));
}

} // namespace

FolderMapView::FolderMapView(QWidget* parent) : QWidget(parent) {
    accessibleParts::install();
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(wordsHere(FolderMap::title));
}

void FolderMapView::present(FolderMap shown) {
    map = std::move(shown);
    lay();
    accessibleParts::announceReset(*this);
}

void FolderMapView::lay() {
    layout = FolderMapLayout::of(
        map, {.width = static_cast<double>(width()),
              .height = static_cast<double>(height()),
              .header = static_cast<double>(FolderMapPainter::headerHeight(font())),
              .lowestFolder = 3.0 * FolderMapPainter::headerHeight(font())});
    hovered = -1;
    current = -1;
    select(selected);
    update();
}

void FolderMapView::select(const QStringList& path) {
    selected = path;
    // A tile that combines several parts has the same path as its folder. If such a tile is current
    // and has this path, it stays current; `find` would return the folder.
    if (current >= 0 && pathOf(current) == path)
        return;
    const auto found = path.isEmpty()
                           ? std::nullopt
                           : layout.find(path.value(0).toStdString(), path.value(1).toStdString());
    const int next = found ? static_cast<int>(*found) : -1;
    if (std::exchange(current, next) == next)
        return;
    update();
    if (hasFocus())
        accessibleParts::announceCurrent(*this);
}

QString FolderMapView::partText(int part) const {
    const auto& tile = layout.tiles[static_cast<std::size_t>(part)].tile;
    return spokenText(accessibleTextOf(tile), nameOf(tile), folderTileName(tile));
}

QRect FolderMapView::partArea(int part) const {
    const QRect area = pixels(layout.tiles[static_cast<std::size_t>(part)].area);
    return QStyle::visualRect(layoutDirection(), rect(), area);
}

void FolderMapView::choosePart(int part) {
    const QStringList path = pathOf(part);
    selected = path;
    current = part;
    update();
    accessibleParts::announceCurrent(*this);
    if (!path.isEmpty())
        Q_EMIT chosen(path);
}

/// The path of a tile; for a tile that combines several parts, the path of the folder around it.
QStringList FolderMapView::pathOf(int part) const {
    const auto& placed = layout.tiles[static_cast<std::size_t>(part)];
    QStringList path;
    if (placed.folder)
        path += QString::fromStdString(layout.tiles[*placed.folder].tile.id);
    if (!placed.tile.id.empty())
        path += QString::fromStdString(placed.tile.id);
    return path;
}

QString FolderMapView::tipOf(int part) const {
    const auto& tile = layout.tiles[static_cast<std::size_t>(part)].tile;
    QStringList lines{isolated(folderTileName(tile)), isolated(wordsHere(sizeOf(tile)))};
    if (const auto change = changeOf(tile); !change.empty())
        lines.last() += QStringLiteral("  ") + isolated(QString::fromStdString(change));
    return asPlainText(lines.join(u'\n'));
}

int FolderMapView::at(const QPointF& position) const {
    const double x = layoutDirection() == Qt::RightToLeft ? width() - position.x() : position.x();
    const auto found = layout.at(x, position.y());
    return found ? static_cast<int>(*found) : -1;
}

void FolderMapView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const FolderMapPainter tiles(painter, {.palette = palette(),
                                           .font = font(),
                                           .direction = layoutDirection(),
                                           .isCompared = map.isCompared});
    for (int part = 0; part < partCount(); ++part) {
        const QRect area = partArea(part);
        if (area.intersects(event->rect()))
            tiles.draw(layout.tiles[static_cast<std::size_t>(part)], area, part == hovered);
    }
    if (current >= 0)
        tiles.drawFrame(partArea(current), hasFocus());
    if (partCount() == 0) {
        painter.setPen(textColor::dimmed(palette().color(QPalette::Text)));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap,
                         tr("No folder has a complete size yet."));
    }
}

void FolderMapView::resizeEvent(QResizeEvent*) {
    lay();
}

void FolderMapView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        lay();
}

void FolderMapView::mousePressEvent(QMouseEvent* event) {
    if (const int part = at(event->position()); part >= 0)
        choosePart(part);
}

void FolderMapView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (const int part = at(event->position()); part >= 0)
        Q_EMIT openRequested(pathOf(part));
}

void FolderMapView::mouseMoveEvent(QMouseEvent* event) {
    const int part = at(event->position());
    const int before = std::exchange(hovered, part);
    for (const int changed : {before, part})
        if (before != part && changed >= 0 && changed < partCount())
            update(partArea(changed));
}

void FolderMapView::leaveEvent(QEvent*) {
    hovered = -1;
    update();
}

void FolderMapView::move(FolderMapLayout::Direction direction) {
    const auto from = current < 0 ? std::nullopt : std::optional<std::size_t>(current);
    if (const auto next = layout.next(from, direction))
        choosePart(static_cast<int>(*next));
}

void FolderMapView::keyPressEvent(QKeyEvent* event) {
    using enum FolderMapLayout::Direction;
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    switch (event->key()) {
    case Qt::Key_Left:
        return move(isMirrored ? right : left);
    case Qt::Key_Right:
        return move(isMirrored ? left : right);
    case Qt::Key_Up:
        return move(up);
    case Qt::Key_Down:
        return move(down);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (current >= 0)
            Q_EMIT openRequested(pathOf(current));
        return;
    case Qt::Key_Backspace:
        // On a part, goes to its folder; on a folder, leaves the map.
        if (current >= 0 && layout.tiles[static_cast<std::size_t>(current)].folder)
            return choosePart(
                static_cast<int>(*layout.tiles[static_cast<std::size_t>(current)].folder));
        return leaveRequested();
    default:
        QWidget::keyPressEvent(event);
    }
}

void FolderMapView::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (current < 0 && partCount() > 0 && event->reason() != Qt::MouseFocusReason)
        move(FolderMapLayout::Direction::right);
    else
        accessibleParts::announceCurrent(*this);
    update();
}

void FolderMapView::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

bool FolderMapView::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    if (const int part = at(help->pos()); part >= 0)
        QToolTip::showText(help->globalPos(), tipOf(part), this, partArea(part));
    else
        QToolTip::hideText();
    return true;
}

} // namespace tidemark
