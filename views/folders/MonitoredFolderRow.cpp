#include "views/folders/MonitoredFolderRow.h"

#include "views/base/ElidedLabel.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QStyle>

namespace tidemark {

MonitoredFolderRow::MonitoredFolderRow(QWidget* parent)
    : RoundedPanel(parent), box(new QCheckBox), path(new ElidedLabel(Qt::ElideMiddle)),
      status(labels::note({})), allowing(new QPushButton) {
    status->setWordWrap(false);
    path->setDim();
    // Below the text of the check box.
    auto* second = new QHBoxLayout;
    second->addSpacing(style()->pixelMetric(QStyle::PM_IndicatorWidth)
                       + style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing));
    second->addWidget(path, 1);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(box);
    texts->addLayout(second);
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(14, 8, 14, 8);
    line->setSpacing(12);
    line->addLayout(texts, 1);
    line->addWidget(status);
    line->addWidget(allowing);
    connect(box, &QCheckBox::clicked, this, &MonitoredFolderRow::ask);
    connect(allowing, &QPushButton::clicked, this, [this] { Q_EMIT monitorRequested(shown); });
}

void MonitoredFolderRow::present(const FolderManagerPage::Row& row) {
    shown = row;
    const QString name = row.isNamed ? QString::fromStdString(row.name) : shownText(row.name);
    box->setText(name);
    box->setChecked(row.isMonitored);
    box->setAccessibleName(spokenText(row.accessibleText, row.name, name));
    path->setText(QString::fromStdString(row.path));
    status->setText(shownText(row.status));
    allowing->setText(shownText(row.actionLabel));
    allowing->setAccessibleDescription(name);
    allowing->setVisible(row.action == FolderManagerPage::Row::Action::allow);
}

std::array<QWidget*, 2> MonitoredFolderRow::controls() const {
    return {box, allowing};
}

void MonitoredFolderRow::ask(bool isOn) {
    box->setChecked(shown.isMonitored);
    // While the user is asked, the row may show another folder, or be gone.
    const auto row = shown;
    if (isOn)
        Q_EMIT monitorRequested(row);
    else
        Q_EMIT stopRequested(row);
}

} // namespace tidemark
