#include "views/folders/FolderManagerView.h"

#include "app/base/Background.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Error.h"
#include "core/base/Text.h"
#include "core/system/SystemFacts.h"
#include "views/base/Labels.h"
#include "views/base/RoundedPanel.h"
#include "views/base/ShownText.h"
#include "views/base/Symbols.h"
#include "views/base/ThinScrollBar.h"
#include "views/folders/DeveloperSuggestionsView.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace tidemark {

namespace {

constexpr int widestPage = 640;

std::filesystem::path homeOf(FolderAccess& access) {
    return developerSuggestions::homeOf(access.recommendedFolders(), SystemFacts::homeDirectory());
}

/// The page may be gone when that is done. A failure is shown on it: `FolderAccess::message` has it
/// only of some commands.
QCoro::Task<void> allow(AppModel& model, std::vector<std::filesystem::path> folders,
                        FolderPurposes purposes, QPointer<QLabel> message) {
    const FolderAccess::PurposesOf purposesOf = [purposes](const std::filesystem::path& path) {
        auto all = FolderGrant::suggestedPurposes(path);
        all.insert(purposes.begin(), purposes.end());
        return all;
    };
    std::string failure;
    try {
        co_await model.folderAccess().add(std::move(folders), purposesOf);
    } catch (const Error& error) {
        failure = error.what();
    }
    if (!message)
        co_return;
    message->setText(wordsHere(failure));
    message->setVisible(!failure.empty());
}

} // namespace

FolderManagerView::FolderManagerView(AppModel& controller, TaskScope& scope, QWidget* parent)
    : QScrollArea(parent), model(controller), tasks(scope), heading(labels::title({}, 1.6)),
      message(labels::note({})), later(labels::note(wordsHere(FolderManagerPage::later))),
      rows(new QVBoxLayout), suggestions(new DeveloperSuggestionsView) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    useThinScrollBars(*this);
    setAccessibleName(wordsHere(FolderManagerPage::listHeading));
    auto* page = new QWidget;
    page->setMaximumWidth(widestPage);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(24, 32, 24, 24);
    column->setSpacing(12);
    rows->setSpacing(6);
    auto* add = new QPushButton(wordsHere(FolderManagerPage::addFolders));
    auto* finish = new QPushButton(wordsHere(FolderManagerPage::finish));
    finish->setDefault(true);
    message->hide();
    // Until it is known which of them exist.
    suggestions->hide();
    column->addWidget(heading);
    column->addWidget(labels::note(wordsHere(FolderManagerPage::explanation)));
    column->addWidget(labels::heading(wordsHere(FolderManagerPage::listHeading)));
    column->addLayout(rows);
    column->addWidget(message);
    column->addWidget(add, 0, Qt::AlignLeading);
    column->addSpacing(12);
    column->addWidget(suggestions);
    column->addSpacing(12);
    column->addWidget(later);
    column->addWidget(finish, 0, Qt::AlignTrailing);
    column->addStretch();
    auto* content = new QWidget;
    auto* centre = new QHBoxLayout(content);
    centre->addStretch();
    centre->addWidget(page, 1);
    centre->addStretch();
    setWidget(content);
    connect(add, &QPushButton::clicked, this, &FolderManagerView::addFolders);
    connect(suggestions, &DeveloperSuggestionsView::chosen, this,
            &FolderManagerView::monitorSuggested);
    connect(finish, &QPushButton::clicked, this,
            [this] { tasks.start(model.finishFolderManagement()); });
    connect(&model.folderAccess(), &FolderAccess::changed, this, &FolderManagerView::refresh);
}

void FolderManagerView::begin(bool isFirstSetup) {
    isFirst = isFirstSetup;
    model.beginFolderManagement();
    tasks.start(lookUp(this, tasks));
    refresh();
}

QCoro::Task<void> FolderManagerView::lookUp(QPointer<FolderManagerView> view, TaskScope& tasks) {
    const auto hold = tasks.hold();
    const auto find = [folders = view->model.folderAccess().recommendedFolders(),
                       home = homeOf(view->model.folderAccess())](const std::stop_token&) {
        Places found;
        for (const auto& folder : folders)
            found.recommended.push_back(textFromBytes(canonicalPath(folder.url).native()));
        std::error_code ignored;
        for (const auto& place : developerSuggestions::locations())
            if (auto path = home / place.path; std::filesystem::is_directory(path, ignored))
                found.existing.insert(std::move(path));
        return found;
    };
    auto found = co_await runInBackground(find, tasks.token());
    if (!view)
        co_return;
    view->places = std::move(found);
    view->suggestions->show();
    view->refresh();
}

void FolderManagerView::refresh() {
    auto& access = model.folderAccess();
    const auto page = folderManagerPage(
        {.isFirstSetup = isFirst, .access = access, .recommendedPaths = places.recommended});
    heading->setText(wordsHere(page.heading));
    later->setVisible(isFirst);
    fillRows(page);
    suggestions->present(developerSuggestions::found(
        developerSuggestions::locations(), homeOf(access), access.grants(),
        [this](const std::filesystem::path& path) { return places.existing.contains(path); }));
}

void FolderManagerView::fillRows(const FolderManagerPage& page) {
    while (auto* item = rows->takeAt(0)) {
        item->widget()->deleteLater();
        delete item;
    }
    for (const auto& row : page.rows)
        rows->addWidget(rowOf(row));
}

QWidget* FolderManagerView::rowOf(const FolderManagerPage::Row& row) {
    auto* made = new RoundedPanel;
    auto* box = new QCheckBox(QString::fromStdString(row.name));
    box->setChecked(row.isMonitored);
    box->setAccessibleName(QString::fromStdString(row.accessibleText));
    auto* path = labels::note(isolated(QString::fromStdString(row.path)));
    auto* status = labels::note(shownText(row.status));
    status->setWordWrap(false);
    auto* line = new QHBoxLayout(made);
    line->setContentsMargins(14, 10, 14, 10);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(box);
    texts->addWidget(path);
    line->addLayout(texts, 1);
    line->addWidget(status);
    if (row.action == FolderManagerPage::Row::Action::allow) {
        auto* allowing = new QPushButton(shownText(row.actionLabel));
        allowing->setAccessibleDescription(QString::fromStdString(row.name));
        connect(allowing, &QPushButton::clicked, this, [this, row] { monitor(row); });
        line->addWidget(allowing);
    }
    // The click itself changes nothing: the row follows what is stored.
    connect(box, &QCheckBox::clicked, this, [this, row, box](bool isOn) {
        box->setChecked(row.isMonitored);
        isOn ? monitor(row) : stopMonitoring(row);
    });
    return made;
}

void FolderManagerView::monitor(const FolderManagerPage::Row& row) {
    for (const auto& folder : model.folderAccess().recommendedFolders())
        if (folder.title == row.name) {
            tasks.start(allow(model, {folder.url}, {folder.purpose}, message));
            return;
        }
    tasks.start(allow(model, {std::filesystem::path(row.path)}, {FolderPurpose::storage}, message));
}

void FolderManagerView::monitorSuggested(const std::vector<std::filesystem::path>& folders) {
    tasks.start(allow(model, folders, {FolderPurpose::storage}, message));
}

void FolderManagerView::stopMonitoring(const FolderManagerPage::Row& row) {
    QMessageBox question(QMessageBox::Question, {}, shownText(StopMonitoring::title(row.name)),
                         QMessageBox::Cancel, this);
    question.setInformativeText(wordsHere(StopMonitoring::explanation));
    auto* stop = question.addButton(tr("Stop Monitoring"), QMessageBox::DestructiveRole);
    question.exec();
    if (question.clickedButton() == stop && row.grant)
        model.folderAccess().remove(*row.grant);
}

void FolderManagerView::addFolders() {
    const QString chosen = QFileDialog::getExistingDirectory(
        this, wordsHere(FolderManagerPage::addFolders), QDir::homePath());
    if (!chosen.isEmpty())
        tasks.start(allow(model, {std::filesystem::path(QFile::encodeName(chosen).toStdString())},
                          {FolderPurpose::storage}, message));
}

} // namespace tidemark
