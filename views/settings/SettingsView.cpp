#include "views/settings/SettingsView.h"

#include "app/memory/MemoryFolders.h"
#include "app/preferences/PreferenceKeys.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/ThinScrollBar.h"
#include "views/settings/SettingsRowView.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFrame>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>

namespace tidemark {

namespace {

using Command = SettingsRow::Command;

constexpr int widestPage = 640;
constexpr QSize firstSize(680, 720);
constexpr int sectionSpace = 28;
constexpr int groupSpace = 14;
constexpr int rowSpace = 8;
constexpr double sectionScale = 1.35;

/// What a page consists of. Two pages of the same shape differ in texts and values alone.
std::vector<std::string> shapeOf(const std::vector<SettingsSection>& page) {
    std::vector<std::string> shape;
    for (const auto& section : page) {
        shape.push_back(section.heading);
        for (const auto& group : section.groups) {
            shape.push_back(group.heading);
            for (const auto& row : group.rows)
                shape.push_back(std::to_string(static_cast<int>(row.kind)) + std::string(row.key)
                                + std::to_string(static_cast<int>(row.command)));
        }
    }
    return shape;
}

std::vector<SettingsRow> rowsOf(const std::vector<SettingsSection>& page) {
    std::vector<SettingsRow> rows;
    for (const auto& section : page)
        for (const auto& group : section.groups)
            rows.insert(rows.end(), group.rows.begin(), group.rows.end());
    return rows;
}

QFrame* line() {
    auto* made = new QFrame;
    made->setFrameShape(QFrame::HLine);
    made->setFrameShadow(QFrame::Plain);
    made->setForegroundRole(QPalette::Midlight);
    return made;
}

} // namespace

SettingsView::SettingsView(const Uses& used) : uses(used) {
    setWindowTitle(tr("Settings"));
    setWindowFlag(Qt::Window);
    resize(firstSize);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(tr("Settings"));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    useThinScrollBars(*this);
    auto* page = new QWidget;
    page->setMaximumWidth(widestPage);
    column = new QVBoxLayout(page);
    column->setContentsMargins(28, 20, 28, 28);
    column->setSpacing(0);
    auto* content = new QWidget;
    auto* centre = new QHBoxLayout(content);
    centre->setContentsMargins(0, 0, 0, 0);
    centre->addStretch();
    centre->addWidget(page, 1000);
    centre->addStretch();
    setWidget(content);

    for (const auto key : {QKeySequence::Close, QKeySequence::Cancel})
        connect(new QShortcut(key, this), &QShortcut::activated, this, &QWidget::close);
    followModel();
    refresh();
}

void SettingsView::followModel() {
    refreshing.setSingleShot(true);
    refreshing.setInterval(0);
    connect(&refreshing, &QTimer::timeout, this, &SettingsView::refresh);
    for (Observable* part : std::initializer_list<Observable*>{
             &uses.model.state(), &uses.preferences, &uses.viewSettings, &uses.shortcut,
             &uses.files, &uses.clipboard})
        connect(part, &Observable::changed, this, [this] { refreshing.start(); });
    if (!uses.login)
        return;
    connect(uses.login, &Observable::changed, this, [this] {
        refreshing.start();
        if (const auto& failure = *uses.login->error; failure && !*uses.login->busy)
            report(QString::fromStdString(*failure));
    });
}

// What the machine has can change without notice, for example when the user installs a service in
// another window.
void SettingsView::showEvent(QShowEvent* event) {
    QScrollArea::showEvent(event);
    refreshing.start();
}

void SettingsView::changeEvent(QEvent* event) {
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::ActivationChange)
        refreshing.start();
}

std::vector<SettingsSection> SettingsView::pageNow() const {
    const SettingSources sources = uses.sources();
    SettingsPageState state{.preferences = uses.preferences, .sources = sources};
    state.fileStatus = uses.files.status();
    if (read(uses.preferences, preferenceKeys::memoryClipboard))
        state.clipboardStatus = uses.clipboard.status();
    state.isRecording = uses.model.state().canRecord();
    state.canChangeRecording = uses.model.canChangeRecording();
    state.nextCapture = uses.model.nextAutomaticCapture();
    state.shortcut = uses.shortcut.availability;
    if (uses.login) {
        using Status = LoginLaunchController::ServiceStatus;
        state.opensAtLogin = uses.login->enabled();
        state.loginNeedsApproval = *uses.login->status == Status::requiresApproval;
    }
    return settingsPage(state);
}

void SettingsView::refresh() {
    // The page is refreshed when it is shown again.
    if (!isVisible() && !shape.empty())
        return;
    const auto page = pageNow();
    if (auto next = shapeOf(page); next != shape) {
        shape = std::move(next);
        build(page);
        return;
    }
    const auto now = rowsOf(page);
    for (std::size_t i = 0; i < now.size(); ++i)
        rows[i]->present(now[i]);
}

void SettingsView::build(const std::vector<SettingsSection>& page) {
    const auto focused = std::ranges::find_if(
        rows, [](const SettingsRowView* row) { return row->focusProxy() && row->hasFocus(); });
    const auto kept = focused == rows.end() ? SettingsRow() : (*focused)->row();
    rows.clear();
    while (auto* item = column->takeAt(0)) {
        if (item->widget())
            item->widget()->deleteLater();
        delete item;
    }
    for (const auto& section : page) {
        if (&section != &page.front()) {
            column->addSpacing(sectionSpace / 2);
            column->addWidget(line());
            column->addSpacing(sectionSpace / 2);
        }
        column->addWidget(labels::title(wordsHere(section.heading), sectionScale));
        for (const auto& group : section.groups) {
            column->addSpacing(groupSpace);
            if (!group.heading.empty()) {
                column->addWidget(labels::heading(shownText(group.heading)));
                column->addSpacing(rowSpace);
            }
            for (const auto& row : group.rows) {
                rows.push_back(new SettingsRowView(row));
                connectRow(*rows.back());
                column->addWidget(rows.back());
                column->addSpacing(rowSpace);
            }
        }
    }
    column->addStretch();
    if (kept.kind == SettingsRow::Kind::text)
        return;
    for (auto* row : rows)
        if (row->row().key == kept.key && row->row().command == kept.command)
            return row->setFocus();
}

void SettingsView::connectRow(SettingsRowView& row) {
    connect(&row, &SettingsRowView::valueChosen, this,
            [this, &row](const PreferenceValue& value) { store(row.row().key, value); });
    connect(&row, &SettingsRowView::triggered, this, [this, &row] {
        // A copy, since the row may be made anew.
        carryOut(SettingsRow(row.row()));
    });
}

void SettingsView::carryOut(const SettingsRow& row) {
    switch (row.command) {
    case Command::openFolders:
        return foldersRequested();
    case Command::searchHistory:
        return searchRequested();
    case Command::importHistory:
        return importRequested();
    case Command::openLogin:
        if (uses.login)
            uses.tasks.start(uses.login->setEnabled(!row.isOn));
        return;
    case Command::changeRecording:
        return uses.model.setRecordingMode(
            uses.model.state().canRecord() ? RecordingMode::paused : RecordingMode::recording);
    case Command::addConfigurationFile:
        return addConfigurationFiles();
    case Command::removeConfigurationFile:
        return removeConfigurationFile(row.value);
    case Command::includeFolder:
        return includeFolder();
    case Command::removeFolder:
        return uses.files.remove(row.value);
    case Command::clearClipboard:
        return clearClipboard();
    // Rows with `none` do nothing here. The settings have rows with the other commands only where
    // the system has login items or an updater. This window is for systems that have neither.
    case Command::openLoginItems:
    case Command::checkForUpdates:
    case Command::automaticUpdateChecks:
    case Command::automaticUpdateDownloads:
    case Command::none:
        return;
    }
}

void SettingsView::store(std::string_view key, const PreferenceValue& value) {
    if (!uses.preferences.set(key, value))
        report(QString::fromStdString(
            uses.preferences.problem().value_or("The setting could not be stored.")));
    // A control whose value was refused returns to the stored one.
    refreshing.start();
}

void SettingsView::addConfigurationFiles() {
    const auto chosen =
        QFileDialog::getOpenFileNames(this, wordsHere(configurationFilesPrompt), QDir::homePath());
    if (chosen.isEmpty())
        return;
    auto paths = read(uses.preferences, preferenceKeys::configurationHistoryPaths);
    for (const auto& file : chosen)
        if (const auto path = file.toStdString(); std::ranges::count(paths, path) == 0)
            paths.push_back(path);
    store(preferenceKeys::configurationHistoryPaths.name, paths);
}

void SettingsView::removeConfigurationFile(const std::string& path) {
    auto paths = read(uses.preferences, preferenceKeys::configurationHistoryPaths);
    std::erase(paths, path);
    store(preferenceKeys::configurationHistoryPaths.name, paths);
}

void SettingsView::includeFolder() {
    QFileDialog dialog(this, wordsHere(MemoryFolders::message), QDir::homePath());
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setLabelText(QFileDialog::Accept, wordsHere(MemoryFolders::prompt));
    if (dialog.exec() == QDialog::Accepted)
        uses.tasks.start(
            uses.files.include(QFile::encodeName(dialog.selectedFiles().value(0)).toStdString()));
}

void SettingsView::clearClipboard() {
    QMessageBox question(QMessageBox::Question, windowTitle(), shownText(clearClipboardQuestion),
                         QMessageBox::Cancel, this);
    auto* confirm =
        question.addButton(shownText(clearClipboardConfirm), QMessageBox::DestructiveRole);
    question.exec();
    if (question.clickedButton() != confirm)
        return;
    try {
        uses.memory.clearClipboard();
    } catch (const std::exception& error) {
        report(QString::fromUtf8(error.what()));
    }
}

void SettingsView::report(const QString& failure) {
    QMessageBox::warning(this, windowTitle(), asPlainText(wordsHere(failure.toStdString())));
}

} // namespace tidemark
