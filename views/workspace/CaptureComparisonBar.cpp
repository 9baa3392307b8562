#include "views/workspace/CaptureComparisonBar.h"

#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/Symbols.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace tidemark {

CaptureComparisonBar::CaptureComparisonBar(QWidget* parent)
    : QWidget(parent), note(labels::note({})) {
    auto* back = new QPushButton(symbolIcon("chart.line"), tr("Back to Storage Over Time"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(20, 0, 14, 12);
    row->setSpacing(8);
    row->addWidget(note, 1);
    row->addWidget(back);
    connect(back, &QPushButton::clicked, this, &CaptureComparisonBar::closed);
}

void CaptureComparisonBar::present(const QString& from, const QString& to) {
    note->setText(isolated(from + QStringLiteral(" → ") + to));
}

} // namespace tidemark
