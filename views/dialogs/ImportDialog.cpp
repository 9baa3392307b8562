#include "views/dialogs/ImportDialog.h"

#include "app/model/ImportText.h"
#include "app/model/ImportView.h"
#include "core/base/Text.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/Symbols.h"
#include "views/base/ThinScrollBar.h"
#include "views/base/WrappingLabel.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace tidemark {

namespace {

constexpr QSize firstSize(560, 560);

QCoro::Task<void> read(HistoryImport& imports) {
    co_await imports.previewImport();
}

QCoro::Task<void> import(HistoryImport& imports, std::vector<InstallationRecord> records) {
    co_await imports.importHistory(std::move(records));
}

QListWidgetItem* itemOf(const ImportView::Row& row) {
    const QString name = isolated(QString::fromStdString(oneLine(row.name)));
    QString second = isolated(shownPart(row.version));
    if (row.isImported)
        second += QStringLiteral(" · ") + wordsHere(importText::alreadyImported);
    auto* item = new QListWidgetItem(symbolIcon("shippingbox"), name + u'\n' + second);
    item->setData(Qt::AccessibleTextRole, QString(name + QStringLiteral(", ") + second));
    item->setFlags(row.isImported ? Qt::ItemIsSelectable
                                  : Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    return item;
}

} // namespace

ImportDialog::ImportDialog(AppModel& controller, TaskScope& scope, QWidget* parent)
    : QDialog(parent), model(controller), tasks(scope),
      includeRoutine(new QCheckBox(wordsHere(importText::includeRoutine))), rows(new QListWidget),
      status(new WrappingLabel), skipped(labels::note({})),
      retry(new QPushButton(wordsHere(importText::tryAgain))), confirmation(new QPushButton) {
    setWindowTitle(wordsHere(importText::title));
    resize(firstSize);
    rows->setAccessibleName(tr("Installation records"));
    rows->setIconSize({22, 22});
    rows->setSpacing(3);
    useThinScrollBars(*rows);
    auto* explanation = new QLabel(wordsHere(importText::explanation));
    explanation->setWordWrap(true);
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(wordsHere(importText::cancel), QDialogButtonBox::RejectRole);
    buttons->addButton(confirmation, QDialogButtonBox::AcceptRole);
    auto* foot = new QHBoxLayout;
    foot->addWidget(labels::note(wordsHere(importText::local)), 1);
    foot->addWidget(buttons);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 20, 20, 16);
    column->setSpacing(10);
    column->addWidget(labels::title(wordsHere(importText::title), 1.4));
    column->addWidget(explanation);
    column->addWidget(labels::note(wordsHere(importText::limits)));
    column->addWidget(includeRoutine);
    column->addWidget(labels::note(wordsHere(importText::routineExplanation)));
    column->addWidget(rows, 1);
    column->addWidget(status);
    column->addWidget(skipped);
    column->addWidget(retry, 0, Qt::AlignLeading);
    column->addLayout(foot);
    connect(includeRoutine, &QCheckBox::toggled, this, &ImportDialog::refresh);
    connect(retry, &QPushButton::clicked, this, &ImportDialog::readAgain);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons, &QDialogButtonBox::accepted, this, &ImportDialog::confirm);
    connect(this, &QDialog::finished, this, [this] { model.imports().importPresented = false; });
    for (Observable* part : std::initializer_list<Observable*>{&model.imports(), &model.state()})
        connect(part, &Observable::changed, this, &ImportDialog::refresh);
    refresh();
}

void ImportDialog::readAgain() {
    isConfirmed = false;
    tasks.start(read(model.imports()));
    refresh();
}

void ImportDialog::refresh() {
    const auto& imports = model.imports();
    const auto& preview = *imports.importPreview;
    // The import has closed the view.
    if (isConfirmed && !*imports.importPresented)
        return accept();
    const auto& failure =
        isConfirmed && !model.state().busy() ? *model.state().error : *imports.importError;
    rows->clear();
    retry->setVisible(failure.has_value());
    skipped->hide();
    status->show();
    confirmation->setEnabled(false);
    confirmation->setText(wordsHere(importText::confirm(0)));
    if (failure)
        return status->setWhole(wordsHere(*failure));
    if (!preview)
        return status->setWhole(wordsHere(importText::reading));
    const auto view = ImportView::of(*preview, includeRoutine->isChecked(), imports.importedIDs(),
                                     model.state().busy());
    for (const auto& row : view.rows)
        rows->addItem(itemOf(row));
    status->setVisible(view.notice.has_value());
    status->setWhole(wordsHere(view.notice.value_or("")));
    skipped->setVisible(view.skippedNotice.has_value());
    skipped->setText(wordsHere(view.skippedNotice.value_or("")));
    confirmation->setText(wordsHere(view.confirmLabel));
    confirmation->setEnabled(view.canConfirm);
}

void ImportDialog::confirm() {
    const auto& preview = *model.imports().importPreview;
    if (!preview)
        return;
    auto view = ImportView::of(*preview, includeRoutine->isChecked(), model.imports().importedIDs(),
                               model.state().busy());
    if (!view.canConfirm)
        return;
    isConfirmed = true;
    tasks.start(import(model.imports(), std::move(view.newRecords)));
}

} // namespace tidemark
