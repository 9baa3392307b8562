#include "views/settings/SettingsRowView.h"

#include "app/preferences/PreferenceKeys.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <charconv>

namespace tidemark {

namespace {

using Kind = SettingsRow::Kind;

int numberIn(const std::string& text) {
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

/// The bounds of the setting with this key.
const NumberKey* numberKey(std::string_view name) {
    for (const auto& key : preferenceKeys::all)
        if (const auto* number = std::get_if<NumberKey>(&key); number && number->name == name)
            return number;
    return nullptr;
}

/// The label in the language of the user; a path stays as it is.
QString labelOf(const SettingsRow& row) {
    return row.kind == Kind::path ? isolated(QString::fromStdString(row.label))
                                  : shownText(row.label);
}

/// A combo box or spin box that the wheel does not change while the page is scrolled over it.
template <class Base>
class WithoutWheel final : public Base {
public:
    using Base::Base;

protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

} // namespace

SettingsRowView::SettingsRowView(const SettingsRow& row, QWidget* parent)
    : QWidget(parent), shown(row), reason(labels::note({})) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(makeControl());
    column->addWidget(reason);
    for (QWidget* control : std::initializer_list<QWidget*>{button, choice, number, field})
        if (control)
            setFocusProxy(control);
    present(row);
}

void SettingsRowView::present(const SettingsRow& row) {
    shown = row;
    const QString text = labelOf(row);
    if (label)
        label->setText(text);
    if (button) {
        const QSignalBlocker blocker(button);
        if (row.kind == Kind::path)
            button->setAccessibleName(tr("Remove %1").arg(text));
        else
            button->setText(text);
        if (row.kind == Kind::toggle)
            button->setChecked(row.isOn);
        button->setEnabled(row.isEnabled());
    }
    if (choice) {
        const QSignalBlocker blocker(choice);
        choice->setCurrentIndex(choice->findData(QString::fromStdString(row.value)));
        choice->setEnabled(row.isEnabled());
    }
    if (number) {
        const QSignalBlocker blocker(number);
        number->setValue(numberIn(row.value));
        number->setEnabled(row.isEnabled());
    }
    if (field) {
        if (!field->hasFocus()) {
            field->setText(QString::fromStdString(row.value));
            field->home(false);
        }
        field->setEnabled(row.isEnabled());
    }
    setToolTip(shownText(row.help));
    reason->setText(shownText(row.absence));
    reason->setVisible(!row.absence.empty());
    if (button)
        button->setAccessibleDescription(reason->text());
}

QWidget* SettingsRowView::makeControl() {
    switch (shown.kind) {
    case Kind::toggle:
        return makeToggle();
    case Kind::choice:
        return makeChoice();
    case Kind::number:
        return makeNumber();
    case Kind::textField:
        return makeTextField();
    case Kind::button:
    case Kind::path:
        return makeButton();
    case Kind::text:
        break;
    }
    return label = labels::note({});
}

QWidget* SettingsRowView::makeToggle() {
    button = new QCheckBox;
    connect(button, &QAbstractButton::clicked, this, [this](bool isOn) {
        // The box follows what is stored.
        button->setChecked(shown.isOn);
        if (shown.key.empty())
            Q_EMIT triggered();
        else
            Q_EMIT valueChosen(isOn);
    });
    return button;
}

QWidget* SettingsRowView::makeChoice() {
    choice = new WithoutWheel<QComboBox>;
    choice->setFocusPolicy(Qt::StrongFocus);
    for (const auto& option : shown.options)
        choice->addItem(shownText(option.label), QString::fromStdString(option.value));
    connect(choice, &QComboBox::activated, this, [this](int index) {
        Q_EMIT valueChosen(choice->itemData(index).toString().toStdString());
    });
    return besideLabel(choice);
}

QWidget* SettingsRowView::makeNumber() {
    number = new WithoutWheel<QSpinBox>;
    number->setFocusPolicy(Qt::StrongFocus);
    // "36" is not to be stored on the way to "365".
    number->setKeyboardTracking(false);
    if (const auto* key = numberKey(shown.key))
        number->setRange(static_cast<int>(key->least), static_cast<int>(key->most));
    connect(number, &QSpinBox::valueChanged, this,
            [this](int value) { Q_EMIT valueChosen(std::int64_t{value}); });
    return besideLabel(number);
}

QWidget* SettingsRowView::makeTextField() {
    field = new QLineEdit;
    connect(field, &QLineEdit::editingFinished, this, [this] {
        if (const auto text = field->text().toStdString(); text != shown.value)
            Q_EMIT valueChosen(text);
    });
    auto* both = new QWidget;
    auto* column = new QVBoxLayout(both);
    column->setContentsMargins(0, 0, 0, 0);
    label = new QLabel;
    label->setBuddy(field);
    column->addWidget(label);
    column->addWidget(field);
    field->setAccessibleName(labelOf(shown));
    return both;
}

QWidget* SettingsRowView::makeButton() {
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    if (shown.kind == Kind::path) {
        label = new QLabel;
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setWordWrap(true);
        row->addWidget(label, 1);
        button = new QPushButton(tr("Remove"));
    } else {
        button = new QPushButton;
    }
    row->addWidget(button);
    if (!label)
        row->addStretch(1);
    connect(button, &QAbstractButton::clicked, this, &SettingsRowView::triggered);
    return line;
}

QWidget* SettingsRowView::besideLabel(QWidget* control) {
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    label = new QLabel;
    label->setBuddy(control);
    control->setAccessibleName(labelOf(shown));
    row->addWidget(label);
    row->addWidget(control);
    row->addStretch(1);
    return line;
}

} // namespace tidemark
