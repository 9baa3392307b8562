#include "views/workspace/FooterView.h"

#include "core/presentation/WorkspaceText.h"
#include "views/base/ElidedLabel.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"

#include <QHBoxLayout>
#include <QProgressBar>
#include <QPushButton>

namespace tidemark {

namespace {

constexpr int barWidth = 90;
constexpr int barHeight = 6;

} // namespace

FooterView::FooterView(QWidget* parent)
    : QWidget(parent), text(new ElidedLabel), bar(new QProgressBar), cancel(new QPushButton) {
    labels::scale(*text, 0.9);
    text->setDim();
    // Without a maximum, it only shows that something runs.
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    bar->setFixedSize(barWidth, barHeight);
    bar->setAccessibleName(tr("Capture in progress"));
    cancel->setText(tr("Cancel"));
    cancel->setToolTip(tr("Stop this capture; nothing of it is kept"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(20, 4, 14, 4);
    row->setSpacing(10);
    row->addWidget(text, 1);
    row->addWidget(bar);
    row->addWidget(cancel);
    // The list must not move when a capture begins.
    setFixedHeight(cancel->sizeHint().height() + 8);
    connect(cancel, &QPushButton::clicked, this, &FooterView::cancelled);
    present(std::nullopt);
}

void FooterView::present(const std::optional<QString>& stage) {
    text->setText(stage.value_or(wordsHere(workspaceText::footer)));
    bar->setVisible(stage.has_value());
    cancel->setVisible(stage.has_value());
}

} // namespace tidemark
