#include "views/folders/FolderMapPane.h"

#include "views/base/ElidedLabel.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/Symbols.h"
#include "views/folders/DashedPanel.h"
#include "views/folders/FolderMapLegend.h"
#include "views/folders/FolderMapView.h"

#include <QEvent>
#include <QToolButton>
#include <QVBoxLayout>

namespace tidemark {

namespace {

constexpr int paneGap = 8;
constexpr double legendScale = 0.92;
/// More would leave no room for the map; the table lists all of them.
constexpr std::size_t mostButtons = 4;

} // namespace

FolderMapPane::FolderMapPane(QWidget* parent)
    : QWidget(parent), head(new QWidget), leave(new QToolButton),
      where(new ElidedLabel(Qt::ElideMiddle)), mapView(new FolderMapView),
      unmeasuredPanel(new DashedPanel), unmeasuredButtons(new QHBoxLayout),
      legend(new FolderMapLegend) {
    leave->setAutoRaise(true);
    leave->setFocusPolicy(Qt::StrongFocus);
    leave->setIcon(symbolIcon("arrow.up"));
    leave->setAccessibleName(tr("Show the folder around"));
    leave->setToolTip(leave->accessibleName());
    auto* path = new QHBoxLayout(head);
    path->setContentsMargins(0, 0, 0, 0);
    path->setSpacing(paneGap / 2);
    path->addWidget(leave);
    path->addWidget(where, 1);
    auto* unmeasured = new QHBoxLayout(unmeasuredPanel);
    unmeasured->setContentsMargins(paneGap, paneGap / 2, paneGap, paneGap / 2);
    auto* note = new DimLabel(wordsHere(FolderMap::unmeasuredTitle));
    labels::scale(*note, legendScale);
    unmeasured->addWidget(note);
    unmeasured->addLayout(unmeasuredButtons);
    unmeasured->addStretch();
    labels::scale(*legend, legendScale);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 4, 12, 12);
    column->setSpacing(paneGap);
    column->addWidget(head);
    column->addWidget(mapView, 1);
    column->addWidget(unmeasuredPanel);
    column->addWidget(legend);
    connect(leave, &QToolButton::clicked, this, &FolderMapPane::leaveRequested);
    connect(mapView, &FolderMapView::leaveRequested, this, &FolderMapPane::leaveRequested);
}

void FolderMapPane::present(FolderMap map, const QStringList& around) {
    head->setVisible(!around.isEmpty());
    where->setText(around.join(QStringLiteral(" › ")));
    where->setToolTip(asPlainText(where->text()));
    showUnmeasured(map.unmeasured);
    legend->setVisible(map.isCompared);
    mapView->present(std::move(map));
}

void FolderMapPane::showUnmeasured(const std::vector<FolderMap::Unmeasured>& unmeasured) {
    while (QLayoutItem* item = unmeasuredButtons->takeAt(0)) {
        item->widget()->deleteLater();
        delete item;
    }
    unmeasuredPanel->setVisible(!unmeasured.empty());
    for (std::size_t i = 0; i < std::min(unmeasured.size(), mostButtons); ++i) {
        const auto& each = unmeasured[i];
        auto* button = new QToolButton;
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setText(isolated(shownPart(each.text)));
        button->setAccessibleName(
            spokenText(each.accessibleText, each.name, shownFolderName(each.id, each.name)));
        connect(button, &QToolButton::clicked, this,
                [this, id = QString::fromStdString(each.id)] { Q_EMIT unmeasuredChosen(id); });
        unmeasuredButtons->addWidget(button);
    }
    if (unmeasured.size() > mostButtons)
        unmeasuredButtons->addWidget(
            new DimLabel(tr("and %1 more").arg(unmeasured.size() - mostButtons)));
}

void FolderMapPane::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        mapView->setFont(font());
}

} // namespace tidemark
