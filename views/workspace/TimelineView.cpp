#include "views/workspace/TimelineView.h"

#include "views/base/Fonts.h"
#include "views/base/ThinScrollBar.h"
#include "views/workspace/EventDelegate.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace tidemark {

TimelineView::TimelineView(QWidget* parent) : QListView(parent) {
    setModel(&events);
    setItemDelegate(new EventDelegate(this));
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
    setMouseTracking(true);
    useThinScrollBars(*this);
    setAccessibleName(tr("Events"));
}

void TimelineView::present(const TimelinePresentation& presentation, Date now,
                           const std::vector<GapRow>& gaps) {
    const bool isAtTop = verticalScrollBar()->value() == 0;
    const QPersistentModelIndex top = indexAt(QPoint(1, 1));
    const int offset = visualRect(top).top();
    {
        // Removing rows moves the current one: no choice of the user.
        const QScopedValueRollback updating(isUpdating, true);
        events.show(presentation, now, gaps);
    }
    if (isAtTop || !top.isValid())
        return;
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(verticalScrollBar()->value() + visualRect(top).top() - offset);
}

void TimelineView::select(const std::string* id) {
    const QModelIndex found = id ? events.indexOf(*id) : QModelIndex();
    if (selectionModel()->selectedIndexes().value(0) == found)
        return;
    const QScopedValueRollback updating(isUpdating, true);
    setCurrentIndex(found);
    if (!found.isValid())
        clearSelection();
}

bool TimelineView::toggleGaps(const QModelIndex& index) {
    if (!events.toggleGaps(index))
        return false;
    Q_EMIT gapsToggled();
    return true;
}

void TimelineView::keyPressEvent(QKeyEvent* event) {
    const bool isToggle = event->key() == Qt::Key_Space || event->key() == Qt::Key_Return
                          || event->key() == Qt::Key_Enter;
    if (!isToggle || !toggleGaps(currentIndex()))
        QListView::keyPressEvent(event);
}

void TimelineView::mousePressEvent(QMouseEvent* event) {
    hasToggled = false;
    QListView::mousePressEvent(event);
}

void TimelineView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (hasToggled)
        return;
    hasToggled = toggleGaps(indexAt(event->position().toPoint()));
    if (!hasToggled)
        QListView::mouseDoubleClickEvent(event);
}

void TimelineView::mouseReleaseEvent(QMouseEvent* event) {
    QListView::mouseReleaseEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && !hasToggled
        && TimelineModel::kindOf(index) == TimelineModel::RowKind::gaps)
        hasToggled = toggleGaps(index);
}

void TimelineView::setTextScale(double scale) {
    const QFont sized = fonts::ofApplication(scale);
    if (sized.pointSizeF() != font().pointSizeF())
        setFont(sized);
}

void TimelineView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QListView::currentChanged(current, previous);
    // The heading of the first day can't be selected, so no key would scroll it into view again.
    if (current.row() == 1 && !isUpdating)
        scrollToTop();
}

void TimelineView::selectionChanged(const QItemSelection& selected,
                                    const QItemSelection& deselected) {
    QListView::selectionChanged(selected, deselected);
    // Reports the selected row: a row becomes the current one as soon as the list has the keyboard.
    if (!isUpdating)
        Q_EMIT eventChosen(events.eventAt(selectionModel()->selectedIndexes().value(0)));
}

} // namespace tidemark
