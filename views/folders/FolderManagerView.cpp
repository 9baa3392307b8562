#include "views/folders/FolderManagerView.h"

#include "app/base/Background.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Error.h"
#include "core/base/Text.h"
#include "core/system/SystemFacts.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/base/ThinScrollBar.h"
#include "views/folders/DeveloperSuggestionsView.h"
#include "views/folders/MonitoredFolderRow.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

namespace tidemark {

namespace {

constexpr int widestPage = 640;

std::filesystem::path homeOf(FolderAccess& access) {
    return developerSuggestions::homeOf(access.recommendedFolders(), SystemFacts::homeDirectory());
}

/// Puts a widget in the middle of a wider one, which is returned.
QWidget* centred(QWidget* page) {
    page->setMaximumWidth(widestPage);
    auto* content = new QWidget;
    auto* centre = new QHBoxLayout(content);
    centre->setContentsMargins(0, 0, 0, 0);
    centre->addStretch();
    centre->addWidget(page, 1);
    centre->addStretch();
    return content;
}

QScrollArea* scrolling(QWidget* page) {
    auto* area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    useThinScrollBars(*area);
    area->setAccessibleName(wordsHere(FolderManagerPage::listHeading));
    area->setWidget(centred(page));
    return area;
}

} // namespace

FolderManagerView::FolderManagerView(AppModel& controller, TaskScope& scope, QWidget* parent)
    : QWidget(parent), model(controller), tasks(scope), heading(labels::title({}, 1.6)),
      message(labels::note({})), later(labels::note(wordsHere(FolderManagerPage::later))),
      rows(new QVBoxLayout), adding(new QPushButton(wordsHere(FolderManagerPage::addFolders))),
      suggestions(new DeveloperSuggestionsView), area(scrolling(page())) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(area, 1);
    column->addWidget(labels::separator());
    auto* bottom = centred(foot());
    column->addWidget(bottom);
    // Keeps this row centred below the page, which moves aside for the scroll bar.
    auto* bar = area->verticalScrollBar();
    connect(bar, &QScrollBar::rangeChanged, bottom, [bar, bottom](int, int most) {
        const int width = most > 0 ? bar->sizeHint().width() : 0;
        const bool isBarOnTheLeft = bottom->isRightToLeft();
        bottom->setContentsMargins(isBarOnTheLeft ? width : 0, 0, isBarOnTheLeft ? 0 : width, 0);
    });
    connect(adding, &QPushButton::clicked, this, &FolderManagerView::addFolders);
    connect(suggestions, &DeveloperSuggestionsView::chosen, this,
            &FolderManagerView::monitorSuggested);
    connect(&model.folderAccess(), &FolderAccess::changed, this, &FolderManagerView::refresh);
}

QWidget* FolderManagerView::page() {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(24, 32, 24, 24);
    column->setSpacing(12);
    rows->setSpacing(6);
    message->hide();
    // Hidden until it is known which of the folders exist.
    suggestions->hide();
    column->addWidget(heading);
    column->addWidget(labels::note(wordsHere(FolderManagerPage::explanation)));
    column->addSpacing(8);
    column->addWidget(labels::heading(wordsHere(FolderManagerPage::listHeading)));
    column->addLayout(rows);
    column->addWidget(message);
    column->addWidget(adding, 0, Qt::AlignLeading);
    column->addSpacing(12);
    column->addWidget(suggestions);
    column->addStretch();
    return page;
}

/// The row below the page, which stays in sight however many folders there are.
QWidget* FolderManagerView::foot() {
    auto* foot = new QWidget;
    auto* row = new QHBoxLayout(foot);
    row->setContentsMargins(24, 10, 24, 10);
    auto* finish = new QPushButton(wordsHere(FolderManagerPage::finish));
    finish->setDefault(true);
    row->addWidget(later, 1);
    row->addStretch();
    row->addWidget(finish);
    connect(finish, &QPushButton::clicked, this,
            [this] { tasks.start(model.finishFolderManagement()); });
    return foot;
}

void FolderManagerView::begin(bool isFirstSetup) {
    isFirst = isFirstSetup;
    failure.clear();
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
    const auto page = folderManagerPage({.isFirstSetup = isFirst,
                                         .access = access,
                                         .recommendedPaths = places.recommended,
                                         .currentFolder = currentFolder});
    heading->setText(wordsHere(page.heading));
    later->setVisible(isFirst);
    message->setText(page.requesting.empty() ? wordsHere(failure)
                                             : isolated(shownText(page.requesting)));
    message->setVisible(!message->text().isEmpty());
    fillRows(page);
    suggestions->present(developerSuggestions::found(
        developerSuggestions::locations(), homeOf(access), access.grants(),
        [this](const std::filesystem::path& path) { return places.existing.contains(path); }));
}

void FolderManagerView::fillRows(const FolderManagerPage& page) {
    while (shownRows.size() > page.rows.size()) {
        delete shownRows.back();
        shownRows.pop_back();
    }
    while (shownRows.size() < page.rows.size())
        addRow();
    // The rows that exist are used again, so that the keyboard focus stays in its row.
    for (std::size_t i = 0; i < page.rows.size(); ++i)
        shownRows[i]->present(page.rows[i]);
}

void FolderManagerView::addRow() {
    auto* row = new MonitoredFolderRow;
    connect(row, &MonitoredFolderRow::monitorRequested, this, &FolderManagerView::monitor);
    connect(row, &MonitoredFolderRow::stopRequested, this, &FolderManagerView::stopMonitoring);
    rows->addWidget(row);
    // The row was made after the controls below it, so its place in the Tab order must be set.
    const auto [box, button] = row->controls();
    QWidget* before = shownRows.empty() ? area : shownRows.back()->controls().back();
    QWidget::setTabOrder(before, box);
    QWidget::setTabOrder(box, button);
    QWidget::setTabOrder(button, adding);
    shownRows.push_back(row);
}

/// The page may be gone when this has finished. A failure is shown on the page itself, because
/// `FolderAccess::message` has the failures of some commands only.
QCoro::Task<void> FolderManagerView::allow(QPointer<FolderManagerView> view, Wanted wanted) {
    const auto hold = view->tasks.hold();
    const FolderAccess::PurposesOf purposesOf = [&wanted](const std::filesystem::path& path) {
        auto all = FolderGrant::suggestedPurposes(path);
        all.insert(wanted.purposes.begin(), wanted.purposes.end());
        return all;
    };
    view->currentFolder = wanted.title;
    view->refresh();
    std::string failure;
    try {
        co_await view->model.folderAccess().add(std::move(wanted.folders), purposesOf);
    } catch (const Error& error) {
        failure = error.what();
    }
    if (!view)
        co_return;
    view->currentFolder.reset();
    view->failure = std::move(failure);
    view->refresh();
}

void FolderManagerView::monitor(const FolderManagerPage::Row& row) {
    for (const auto& folder : model.folderAccess().recommendedFolders())
        if (folder.title == row.name) {
            tasks.start(allow(this, {{folder.url}, {folder.purpose}, folder.title}));
            return;
        }
    addFolder(row.path, row.name);
}

void FolderManagerView::addFolder(const std::filesystem::path& folder, const std::string& title) {
    tasks.start(allow(this, {{folder}, {FolderPurpose::storage}, title}));
}

void FolderManagerView::monitorSuggested(const std::vector<std::filesystem::path>& folders) {
    const std::string first = folders.empty() ? "" : textFromBytes(folders[0].filename().native());
    tasks.start(allow(this, {folders, {FolderPurpose::storage}, first}));
}

void FolderManagerView::stopMonitoring(const FolderManagerPage::Row& row) {
    QMessageBox question(QMessageBox::Question, {},
                         asPlainText(shownText(StopMonitoring::title(row.name))),
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
    if (chosen.isEmpty())
        return;
    const std::filesystem::path folder(QFile::encodeName(chosen).toStdString());
    addFolder(folder, textFromBytes(folder.filename().native()));
}

} // namespace tidemark
