#pragma once

#include "app/base/TaskScope.h"
#include "app/model/AppModel.h"

#include <QDialog>

class QLineEdit;
class QPushButton;

namespace tidemark {

class WrappingLabel;

/// Saving a snapshot under a name: a fresh capture is taken while the user types it.
class SaveSnapshotDialog : public QDialog {
    Q_OBJECT

public:
    SaveSnapshotDialog(AppModel& controller, TaskScope& scope, QWidget* parent);

    /// Starts the capture, shows the dialog, and returns when the snapshot is saved or the user has
    /// given up. Does nothing while recording is paused or another operation prevents it.
    void run();

private:
    void refresh();
    void save();
    void cancel();

    AppModel& model;
    TaskScope& tasks;
    QLineEdit* name;
    WrappingLabel* status;
    QPushButton* saving = nullptr;
    QPushButton* retry = nullptr;
};

} // namespace tidemark
