#include "views/dialogs/ExportDialog.h"

#include "app/base/Background.h"
#include "core/presentation/ExportPanel.h"
#include "views/base/Choices.h"
#include "views/base/GrowToFit.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/WrappingLabel.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFormLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace tidemark {

namespace {

constexpr int narrowest = 460;

QString suffixOf(HistoryExport::Format format) {
    return QString::fromStdString(HistoryExport::fileName(format)).section(u'.', -1);
}

std::filesystem::path pathOf(const QString& file) {
    return QFile::encodeName(file).toStdString();
}

} // namespace

QString ExportDialog::askForFile(QWidget* parent, const QString& name, const QString& filter) {
    QFileDialog dialog(parent, wordsHere(exportPanel::title), QDir::home().filePath(name), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(name.section(u'.', -1));
    dialog.selectFile(name);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

ExportDialog::ExportDialog(HistoryExport exported, TaskScope& scope, QWidget* parent,
                           ChooseFile choose)
    : QDialog(parent), report(std::move(exported)), tasks(scope), chooseFile(std::move(choose)),
      format(new QComboBox), includePrivate(new QCheckBox(wordsHere(exportPanel::includePrivate))),
      failureText(new WrappingLabel),
      buttons(new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel)) {
    setWindowTitle(wordsHere(exportPanel::title));
    setMinimumWidth(narrowest);
    std::vector<Choice> formats;
    int first = 0;
    for (const auto& [value, text] : json::rawValues<HistoryExport::Format>) {
        if (value == exportPanel::firstFormat)
            first = static_cast<int>(formats.size());
        formats.push_back({shownText(text), static_cast<int>(value)});
    }
    showChoices(*format, formats, first);
    format->setAccessibleName(wordsHere(exportPanel::formatLabel));
    failureText->hide();

    auto* choices = new QFormLayout;
    choices->addRow(wordsHere(exportPanel::formatLabel), format);
    choices->addRow(QString(), includePrivate);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(20, 20, 20, 16);
    column->setSpacing(12);
    auto* summary = new QLabel(wordsHere(exportPanel::summary(report.events.size())));
    summary->setWordWrap(true);
    column->addWidget(summary);
    column->addLayout(choices);
    column->addWidget(labels::note(wordsHere(exportPanel::privacyNote)));
    column->addWidget(failureText);
    column->addStretch();
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &ExportDialog::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &ExportDialog::reject);
}

HistoryExport::Format ExportDialog::chosenFormat() const {
    return static_cast<HistoryExport::Format>(format->currentData().toInt());
}

void ExportDialog::save() {
    const QString suffix = suffixOf(chosenFormat());
    const QString filter = QStringLiteral("%1 (*.%2)").arg(format->currentText(), suffix);
    QString file =
        chooseFile(this, QString::fromStdString(HistoryExport::fileName(chosenFormat())), filter);
    if (file.isEmpty())
        return;
    if (!file.endsWith(u'.' + suffix, Qt::CaseInsensitive)) {
        file += u'.' + suffix;
        // The file dialog asked whether to replace a file of the name without the suffix, not this
        // one.
        if (QFile::exists(file))
            return tell(tr("%1 exists already.").arg(file));
    }
    setSaving(true);
    tasks.start(write(this, tasks.token(), pathOf(file)));
}

QCoro::Task<void> ExportDialog::write(QPointer<ExportDialog> dialog, std::stop_token stop,
                                      std::filesystem::path path) {
    const auto hold = dialog->tasks.hold();
    const auto work = [report = dialog->report, path, format = dialog->chosenFormat(),
                       isPrivate = dialog->includePrivate->isChecked()](const std::stop_token&) {
        report.save(path, format, isPrivate);
    };
    std::string failure;
    try {
        co_await runInBackground(work, stop, WorkPriority::userInitiated);
    } catch (const std::exception& error) {
        failure = error.what();
    }
    if (dialog)
        dialog->finish(failure);
}

void ExportDialog::setSaving(bool isSaving) {
    saving = isSaving;
    for (QWidget* control : std::initializer_list<QWidget*>{
             format, includePrivate, buttons->button(QDialogButtonBox::Save)})
        control->setEnabled(!isSaving);
    failureText->setVisible(isSaving);
    failureText->setWhole(isSaving ? tr("Saving…") : QString());
    growToFit(*this);
}

void ExportDialog::finish(const std::string& failure) {
    setSaving(false);
    if (failure.empty())
        return accept();
    tell(wordsHere(exportPanel::failure(failure)));
    // While Save was disabled, the keyboard focus moved to the button that closes the dialog.
    buttons->button(QDialogButtonBox::Save)->setFocus();
}

void ExportDialog::tell(const QString& problem) {
    failureText->setWhole(problem);
    failureText->show();
    growToFit(*this);
}

} // namespace tidemark
