#include "views/workspace/HistoryHead.h"

#include "core/presentation/WorkspaceText.h"
#include "views/base/ElidedLabel.h"
#include "views/base/Fonts.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/Symbols.h"

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>

namespace tidemark {

namespace {

/// The range of the setting.
constexpr int mostDays = 365;
/// The least width at which the coverage button has a text.
constexpr int roomForText = 440;

} // namespace

HistoryHead::HistoryHead(QWidget* parent)
    : QWidget(parent), title(new ElidedLabel), summary(new ElidedLabel), windows(new QComboBox),
      days(new QSpinBox), coverage(new QToolButton) {
    title->setFont(fonts::bold(title->font()));
    labels::scale(*title, 1.5);
    windows->setAccessibleName(tr("Time window"));
    days->setRange(1, mostDays);
    days->setSuffix(tr(" days"));
    days->setAccessibleName(tr("Days of the time window"));
    summary->setDim();
    coverage->setText(isolated(wordsHere(workspaceText::openCoverage)));
    coverage->setAccessibleName(wordsHere(workspaceText::openCoverage));
    coverage->setToolTip(coverage->accessibleName());
    coverage->setAutoRaise(true);
    coverage->setFocusPolicy(Qt::StrongFocus);
    coverage->setIcon(symbolIcon("warning"));

    auto* texts = new QVBoxLayout;
    texts->setSpacing(3);
    texts->addWidget(title);
    texts->addWidget(summary);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(20, 14, 14, 12);
    row->setSpacing(8);
    row->addLayout(texts, 1);
    for (QWidget* control : std::initializer_list<QWidget*>{windows, days, coverage})
        row->addWidget(control, 0, Qt::AlignVCenter);
    connect(windows, &QComboBox::activated, this,
            [this](int index) { Q_EMIT windowChosen(windows->itemData(index).toString()); });
    connect(days, &QSpinBox::valueChanged, this, &HistoryHead::customDaysChosen);
    connect(coverage, &QToolButton::clicked, this, &HistoryHead::coverageRequested);
}

void HistoryHead::present(const Content& content) {
    title->setText(content.title);
    summary->setText(content.summary);
    showChoices(*windows, content.windows, content.window);
    windows->setVisible(!content.windows.empty());
    const QSignalBlocker blocker(days);
    days->setVisible(content.customDays.has_value() && !content.windows.empty());
    if (content.customDays)
        days->setValue(*content.customDays);
    hasCoverageProblems = content.hasCoverageProblems;
    showCoverage();
}

void HistoryHead::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    showCoverage();
}

void HistoryHead::showCoverage() {
    const bool isNarrow = width() < roomForText;
    // The menu has the command, too.
    coverage->setVisible(hasCoverageProblems || !isNarrow);
    // A sign only where there is something to warn of.
    coverage->setToolButtonStyle(!hasCoverageProblems ? Qt::ToolButtonTextOnly
                                 : isNarrow           ? Qt::ToolButtonIconOnly
                                                      : Qt::ToolButtonTextBesideIcon);
}

} // namespace tidemark
