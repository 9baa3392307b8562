#include "views/dialogs/SaveSnapshotDialog.h"

#include "core/base/Text.h"
#include "views/base/GrowToFit.h"
#include "views/base/ShownText.h"
#include "views/base/WrappingLabel.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tidemark {

namespace {

QCoro::Task<void> saveUnder(NamedSnapshots& snapshots, std::string name) {
    co_await snapshots.saveNamedSnapshot(std::move(name));
}

} // namespace

SaveSnapshotDialog::SaveSnapshotDialog(AppModel& controller, TaskScope& scope, QWidget* parent)
    : QDialog(parent), model(controller), tasks(scope), name(new QLineEdit),
      status(new WrappingLabel) {
    setWindowTitle(tr("Save Snapshot"));
    setMinimumWidth(420);
    auto* label = new QLabel(tr("&Name"));
    label->setBuddy(name);
    name->setMaxLength(static_cast<int>(NamedSnapshots::longestName));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel);
    saving = buttons->button(QDialogButtonBox::Save);
    retry = buttons->addButton(tr("Try Again"), QDialogButtonBox::ActionRole);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 20, 20, 16);
    column->setSpacing(10);
    for (QWidget* widget : std::initializer_list<QWidget*>{label, name, status, buttons})
        column->addWidget(widget);
    connect(buttons, &QDialogButtonBox::accepted, this, &SaveSnapshotDialog::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &SaveSnapshotDialog::reject);
    connect(this, &QDialog::rejected, this, &SaveSnapshotDialog::cancel);
    connect(retry, &QPushButton::clicked, this,
            [this] { tasks.start(model.snapshots().prepareSnapshotDraft()); });
    connect(name, &QLineEdit::textChanged, this, &SaveSnapshotDialog::refresh);
    for (Observable* part : std::initializer_list<Observable*>{&model.snapshots(), &model.state(),
                                                               &model.scanProgress()})
        connect(part, &Observable::changed, this, &SaveSnapshotDialog::refresh);
}

void SaveSnapshotDialog::run() {
    tasks.start(model.snapshots().beginSavedSnapshot());
    if (!model.state().isRunning(Operation::naming))
        return;
    refresh();
    exec();
}

void SaveSnapshotDialog::refresh() {
    const auto& state = model.state();
    const auto& snapshots = model.snapshots();
    // The snapshot was saved, or naming it was given up.
    if (!state.isRunning(Operation::naming))
        return accept();
    const bool isReady =
        snapshots.snapshotDraft->has_value() && !state.isRunning(Operation::savingDraft);
    saving->setEnabled(isReady && !trimmed(name->text().toStdString()).empty());
    const auto& failure = *snapshots.snapshotError;
    retry->setVisible(failure.has_value() && !isReady);
    const auto& stage = *model.scanProgress().stage;
    if (failure)
        status->setWhole(wordsHere(*failure));
    else if (state.isRunning(Operation::drafting))
        status->setWhole(stage ? wordsHere(*stage) : tr("Capturing…"));
    else
        status->setWhole(state.isRunning(Operation::savingDraft) ? tr("Saving…") : QString());
    growToFit(*this);
}

void SaveSnapshotDialog::save() {
    tasks.start(saveUnder(model.snapshots(), name->text().toStdString()));
}

void SaveSnapshotDialog::cancel() {
    model.snapshots().cancelSavedSnapshot();
}

} // namespace tidemark
