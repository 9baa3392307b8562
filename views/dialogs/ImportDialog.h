#pragma once

#include "app/base/TaskScope.h"
#include "app/model/AppModel.h"

#include <QDialog>

class QCheckBox;
class QListWidget;
class QPushButton;

namespace tidemark {

class DimLabel;
class WrappingLabel;

/// The choice of recent installations that are added to the history: `readAgain` reads them, and
/// they are imported on confirmation.
class ImportDialog : public QDialog {
    Q_OBJECT

public:
    /// `controller` and `scope` outlive the dialog.
    ImportDialog(AppModel& controller, TaskScope& scope, QWidget* parent);

    void readAgain();

private:
    void refresh();
    void confirm();

    AppModel& model;
    TaskScope& tasks;
    QCheckBox* includeRoutine;
    QListWidget* rows;
    WrappingLabel* status;
    DimLabel* skipped;
    QPushButton* retry;
    QPushButton* confirmation;
    /// True from the confirmation until the list is read again; the dialog closes when the import
    /// succeeds.
    bool isConfirmed = false;
};

} // namespace tidemark
