#include "views/workspace/SnapshotBarView.h"

#include "core/base/JsonFields.h"
#include "core/presentation/WorkspaceText.h"
#include "views/base/Choices.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/Symbols.h"

#include <QHBoxLayout>
#include <QToolButton>

namespace tidemark {

SnapshotBarView::SnapshotBarView(QWidget* parent)
    : QWidget(parent), modes(new QComboBox), note(labels::note({})) {
    auto* label = new QLabel(wordsHere(workspaceText::snapshotView));
    label->setBuddy(modes);
    modes->setAccessibleName(wordsHere(workspaceText::snapshotView));
    auto* remove = new QToolButton;
    remove->setAutoRaise(true);
    remove->setFocusPolicy(Qt::StrongFocus);
    remove->setIcon(symbolIcon("trash.slash"));
    remove->setAccessibleName(tr("Delete Snapshot…"));
    remove->setToolTip(remove->accessibleName());
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(20, 0, 14, 12);
    row->setSpacing(8);
    row->addWidget(label);
    row->addWidget(modes);
    row->addSpacing(6);
    row->addWidget(note, 1);
    row->addWidget(remove);
    connect(modes, &QComboBox::activated, this, [this](int index) {
        Q_EMIT modeChosen(static_cast<SnapshotViewMode>(modes->itemData(index).toInt()));
    });
    connect(remove, &QToolButton::clicked, this, &SnapshotBarView::deletionRequested);
}

void SnapshotBarView::present(const SnapshotBar& bar) {
    std::vector<Choice> choices;
    int selected = 0;
    for (const auto& mode : bar.modes) {
        if (mode.isSelected)
            selected = static_cast<int>(choices.size());
        choices.push_back({wordsHere(mode.label), static_cast<int>(mode.mode)});
    }
    showChoices(*modes, choices, selected);
    note->setText(isolated(wordsHere(bar.note)));
}

} // namespace tidemark
