#pragma once

#include "app/base/TaskScope.h"
#include "core/history/HistoryExport.h"

#include <QDialog>
#include <QPointer>
#include <functional>

class QCheckBox;
class QComboBox;
class QDialogButtonBox;

namespace tidemark {

class WrappingLabel;

/// Saves what is shown as a report. The file is written in the background; when that fails, the
/// dialog says why and stays open.
class ExportDialog : public QDialog {
    Q_OBJECT

public:
    /// Asks for a file, given the proposed name and the filter of its type; empty for none.
    using ChooseFile =
        std::function<QString(QWidget* parent, const QString& name, const QString& filter)>;
    static QString askForFile(QWidget* parent, const QString& name, const QString& filter);

    /// `scope` outlives the dialog.
    ExportDialog(HistoryExport exported, TaskScope& scope, QWidget* parent,
                 ChooseFile choose = askForFile);

    bool isSaving() const { return saving; }

private:
    static QCoro::Task<void> write(QPointer<ExportDialog> dialog, std::stop_token stop,
                                   std::filesystem::path path);
    HistoryExport::Format chosenFormat() const;
    void save();
    void setSaving(bool isSaving);
    void finish(const std::string& failure);
    void tell(const QString& problem);

    const HistoryExport report;
    TaskScope& tasks;
    const ChooseFile chooseFile;
    QComboBox* format;
    QCheckBox* includePrivate;
    WrappingLabel* failureText;
    QDialogButtonBox* buttons;
    bool saving = false;
};

} // namespace tidemark
