#pragma once

#include "app/preferences/Preferences.h"
#include "app/settings/SettingsPage.h"

#include <QWidget>

class QAbstractButton;
class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace tidemark {

class DimLabel;

/// One line of the settings: a control and, where the control does nothing on this machine, the
/// reason below it.
class SettingsRowView : public QWidget {
    Q_OBJECT

public:
    explicit SettingsRowView(const SettingsRow& row, QWidget* parent = nullptr);

    const SettingsRow& row() const { return shown; }
    /// Shows another state of the same row. A text that is being edited is left alone.
    void present(const SettingsRow& row);

Q_SIGNALS:
    /// The user chose a value for the preference of the row.
    void valueChosen(const tidemark::PreferenceValue& value);
    /// The user used a control that sets no preference.
    void triggered();

private:
    QWidget* makeControl();
    QWidget* makeToggle();
    QWidget* makeChoice();
    QWidget* makeNumber();
    QWidget* makeTextField();
    QWidget* makeButton();
    QWidget* besideLabel(QWidget* control);

    SettingsRow shown;
    QLabel* label = nullptr;
    QAbstractButton* button = nullptr;
    QComboBox* choice = nullptr;
    QSpinBox* number = nullptr;
    QLineEdit* field = nullptr;
    DimLabel* reason;
};

} // namespace tidemark
