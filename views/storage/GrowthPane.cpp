#include "views/storage/GrowthPane.h"

#include "core/growth/GrowthText.h"
#include "views/base/Fonts.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/WrappingLabel.h"
#include "views/folders/FolderSizeModel.h"
#include "views/folders/FolderTree.h"
#include "views/storage/GrowthModel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace tidemark {

namespace {

constexpr double headingScale = 1.15;

} // namespace

GrowthPane::GrowthPane(QWidget* parent)
    : QWidget(parent), items(new GrowthModel(this)), list(new FolderTree), period(new DimLabel),
      summary(new WrappingLabel), remarks(labels::note({})) {
    list->setModel(items);
    list->setSortingEnabled(false);
    list->setAccessibleName(wordsHere(GrowthReport::title));
    labels::scale(*remarks, 0.92);
    auto* head = new QHBoxLayout;
    head->addWidget(labels::title(wordsHere(GrowthReport::title), headingScale));
    head->addSpacing(8);
    head->addWidget(period, 1, Qt::AlignBaseline);
    auto* texts = new QVBoxLayout;
    texts->setContentsMargins(20, 12, 20, 6);
    texts->setSpacing(4);
    texts->addLayout(head);
    texts->addWidget(summary);
    texts->addWidget(remarks);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(texts);
    column->addWidget(list, 1);
    const auto choose = [this](const QModelIndex& index) {
        if (const QString path = items->folderAt(index); !path.isEmpty())
            Q_EMIT folderChosen(path);
    };
    connect(list, &QAbstractItemView::clicked, this, choose);
    connect(list, &QAbstractItemView::activated, this, choose);
    setFocusProxy(list);
}

void GrowthPane::present(const GrowthReport& report) {
    period->setText(isolated(QString::fromStdString(growthText::period(report, Calendar()))));
    summary->setWhole(shownText(growthText::summary(report)));
    QStringList lines;
    for (const auto& remark : growthText::remarks(report))
        lines += isolated(shownText(remark));
    remarks->setText(lines.join(u' '));
    remarks->setVisible(!lines.isEmpty());
    const QString current = list->currentIndex().data(FolderSizeModel::idRole).toString();
    items->show(report);
    list->fitColumns();
    if (const QModelIndex again = items->find(current); again.isValid())
        list->setCurrentIndex(again);
}

void GrowthPane::setTextScale(double scale) {
    const QFont sized = fonts::ofApplication(scale);
    if (sized.pointSizeF() == list->font().pointSizeF())
        return;
    list->setFont(sized);
    list->fitColumns();
}

} // namespace tidemark
