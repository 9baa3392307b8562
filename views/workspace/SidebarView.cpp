#include "views/workspace/SidebarView.h"

#include "views/base/ShownText.h"
#include "views/base/Symbols.h"
#include "views/base/ThinScrollBar.h"
#include "views/workspace/SidebarDelegate.h"
#include "views/workspace/SidebarModel.h"

#include <QKeyEvent>
#include <QListView>
#include <QMenu>
#include <QScopedValueRollback>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

namespace tidemark {

namespace {

constexpr int narrowestSidebar = 170;

} // namespace

SidebarView::SidebarView(QWidget* parent)
    : QWidget(parent), places(new SidebarModel(this)), list(new QListView), save(new QToolButton) {
    list->setModel(places);
    list->setItemDelegate(new SidebarDelegate(list));
    list->setFrameShape(QFrame::NoFrame);
    list->viewport()->setBackgroundRole(QPalette::Window);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setVerticalScrollMode(QListView::ScrollPerPixel);
    list->setMouseTracking(true);
    list->setContextMenuPolicy(Qt::CustomContextMenu);
    list->setAccessibleName(tr("Places"));
    list->installEventFilter(this);
    list->viewport()->installEventFilter(this);
    useThinScrollBars(*list);
    save->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    save->setAutoRaise(true);
    save->setFocusPolicy(Qt::StrongFocus);

    setMinimumWidth(narrowestSidebar);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 4, 0, 8);
    column->addWidget(list, 1);
    auto* foot = new QHBoxLayout;
    foot->setContentsMargins(10, 0, 10, 0);
    foot->addWidget(save);
    foot->addStretch();
    column->addLayout(foot);
    setFocusProxy(list);
    connect(list->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &SidebarView::reportChoice);
    connect(list, &QListView::customContextMenuRequested, this, &SidebarView::showMenu);
    connect(save, &QToolButton::clicked, this, &SidebarView::saveRequested);
}

void SidebarView::present(std::vector<SidebarRow> rows) {
    const QScopedValueRollback following(isFollowing, true);
    const auto command = std::ranges::find(rows, SidebarRow::Kind::saveSnapshot, &SidebarRow::kind);
    if (command != rows.end()) {
        save->setText(shownText(command->label));
        save->setToolTip(shownText(command->help));
        save->setEnabled(command->isEnabled);
        save->setIcon(symbolIcon("bookmark"));
    }
    places->show(std::move(rows));
    list->setCurrentIndex(places->selected());
}

void SidebarView::reportChoice(const QModelIndex& index) {
    if (isFollowing || !index.isValid())
        return;
    const SidebarRow row = places->rowAt(index);
    if (row.place)
        Q_EMIT placeChosen(*row.place);
    else if (row.snapshot)
        Q_EMIT snapshotChosen(*row.snapshot);
}

void SidebarView::showMenu(const QPoint& position) {
    const QModelIndex index = list->indexAt(position);
    if (!index.isValid())
        return;
    const SidebarRow row = places->rowAt(index);
    QMenu menu;
    if (!row.filterToggle.empty()) {
        QAction* toggle = menu.addAction(shownText(row.filterToggle));
        toggle->setCheckable(true);
        toggle->setChecked(row.isFilter);
        connect(toggle, &QAction::triggered, this, [&] { Q_EMIT filterToggled(*row.place); });
    }
    if (row.snapshot)
        menu.addAction(symbolIcon("trash.slash"), tr("&Delete Snapshot…"), this,
                       [&] { Q_EMIT deletionRequested(*row.snapshot); });
    if (!menu.isEmpty())
        menu.exec(list->viewport()->mapToGlobal(position));
}

bool SidebarView::eventFilter(QObject* watched, QEvent* event) {
    const bool isHandled =
        event->type() == QEvent::KeyPress           ? press(static_cast<QKeyEvent&>(*event))
        : event->type() == QEvent::MouseButtonPress ? press(static_cast<QMouseEvent&>(*event))
                                                    : false;
    return isHandled || QWidget::eventFilter(watched, event);
}

bool SidebarView::press(const QKeyEvent& key) {
    const QModelIndex index = list->currentIndex();
    if (!index.isValid())
        return false;
    const SidebarRow row = places->rowAt(index);
    if (key.key() == Qt::Key_Delete && row.snapshot) {
        Q_EMIT deletionRequested(*row.snapshot);
        return true;
    }
    if (key.key() == Qt::Key_Space && !row.filterToggle.empty()) {
        Q_EMIT filterToggled(*row.place);
        return true;
    }
    return false;
}

bool SidebarView::press(const QMouseEvent& mouse) {
    const QModelIndex index = list->indexAt(mouse.pos());
    if (mouse.button() != Qt::LeftButton || !index.isValid())
        return false;
    const SidebarRow row = places->rowAt(index);
    const QRect toggle =
        SidebarDelegate::toggleArea(list->visualRect(index), list->layoutDirection());
    if (row.filterToggle.empty() || !toggle.contains(mouse.pos()))
        return false;
    Q_EMIT filterToggled(*row.place);
    return true;
}

} // namespace tidemark
