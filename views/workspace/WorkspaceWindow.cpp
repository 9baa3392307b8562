#include "views/workspace/WorkspaceWindow.h"

#include "app/preferences/PreferenceKeys.h"
#include "core/presentation/CoverageList.h"
#include "core/presentation/SnapshotBar.h"
#include "views/base/EventText.h"
#include "views/base/ShownText.h"
#include "views/dialogs/CoverageDialog.h"
#include "views/dialogs/ExportDialog.h"
#include "views/dialogs/ImportDialog.h"
#include "views/dialogs/SaveSnapshotDialog.h"
#include "views/folders/FolderManagerView.h"
#include "views/workspace/HistoryPane.h"
#include "views/workspace/InspectorView.h"
#include "views/workspace/SidebarView.h"

#include <QApplication>
#include <QClipboard>
#include <QEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStackedWidget>
#include <array>

namespace tidemark {

namespace {

/// Below this width of the window, details and sidebar are not both shown.
constexpr int roomForBoth = 1000;
constexpr int roomForSidebar = 800;
/// At this width the sidebar is hidden, so there are at most two columns.
constexpr QSize smallestWindow(620, 360);

QCoro::Task<void> remove(NamedSnapshots& snapshots, Uuid id) {
    co_await snapshots.deleteSnapshot(id);
}

bool isDark(const QPalette& palette) {
    constexpr int middle = 128;
    return palette.color(QPalette::Window).lightness() < middle;
}

/// With title and subtitle in the language of the user.
EventInspection inspectionOf(const Event& event, const Snapshot* latest, bool isStateComparison) {
    auto made = EventInspection::of(event, latest, isStateComparison);
    made.title = eventText::title(event).toStdString();
    made.subtitle = eventText::subtitle(event).toStdString();
    return made;
}

} // namespace

WorkspaceWindow::WorkspaceWindow(const Uses& used)
    : uses(used), actions(new WorkspaceActions(*this)), pages(new QStackedWidget),
      folders(new FolderManagerView(used.model, used.tasks)), columns(new QSplitter),
      sidebar(new SidebarView), pane(new HistoryPane({used.model, used.memory, used.viewSettings,
                                                      used.preferences, used.sources})),
      inspector(new InspectorView) {
    setWindowTitle(QStringLiteral("Tidemark"));
    columns->setHandleWidth(1);
    columns->setChildrenCollapsible(false);
    for (QWidget* column : std::initializer_list<QWidget*>{sidebar, pane, inspector})
        columns->addWidget(column);
    // Restores the order in which a screen reader reads the columns, which the splitter has
    // reversed. The handles stay on top.
    for (QWidget* part : std::initializer_list<QWidget*>{sidebar, pane, inspector,
                                                         columns->handle(1), columns->handle(2)})
        part->raise();
    inspector->setMinimumWidth(260);
    columns->setStretchFactor(1, 1);
    restoreLayout();
    pages->addWidget(columns);
    pages->addWidget(folders);
    setCentralWidget(pages);
    connectSidebar();
    connectPanes();
    followModel();
    refresh();
    pane->content()->setFocus();
}

void WorkspaceWindow::restoreLayout() {
    const auto stored = [this](const NumberKey& key) {
        return static_cast<int>(read(uses.preferences, key));
    };
    // Without a minimum size of its own, the window could not become narrower than its three
    // columns, and none of them would ever be hidden.
    setMinimumSize(smallestWindow);
    resize(stored(preferenceKeys::windowWidth), stored(preferenceKeys::windowHeight));
    const int sides = stored(preferenceKeys::sidebarWidth) + stored(preferenceKeys::inspectorWidth);
    columns->setSizes({stored(preferenceKeys::sidebarWidth), std::max(1, width() - sides),
                       stored(preferenceKeys::inspectorWidth)});
    connect(qApp, &QCoreApplication::aboutToQuit, this, &WorkspaceWindow::noteLayout);
}

void WorkspaceWindow::noteLayout() {
    const auto note = [this](const NumberKey& key, int value) {
        if (read(uses.preferences, key) != value)
            uses.preferences.note(key.name, std::int64_t{value});
    };
    if (isVisible() && !isMaximized() && !isFullScreen()) {
        note(preferenceKeys::windowWidth, width());
        note(preferenceKeys::windowHeight, height());
    }
    if (sidebar->isVisible())
        note(preferenceKeys::sidebarWidth, sidebar->width());
    if (inspector->isVisible() && width() >= roomForBoth)
        note(preferenceKeys::inspectorWidth, inspector->width());
}

void WorkspaceWindow::connectSidebar() {
    auto& history = uses.model.history();
    connect(sidebar, &SidebarView::placeChosen, this,
            [&history](WorkspaceDestination place) { history.navigate(place, true); });
    connect(sidebar, &SidebarView::snapshotChosen, this,
            [&history](const Uuid& id) { history.openSnapshot(id); });
    connect(sidebar, &SidebarView::filterToggled, this,
            [&history](WorkspaceDestination place) { history.toggleSystemFilter(place); });
    connect(sidebar, &SidebarView::saveRequested, this,
            [this] { follow(EmptyState::Action::saveSnapshot); });
    connect(sidebar, &SidebarView::deletionRequested, this, &WorkspaceWindow::deleteSnapshot);
}

void WorkspaceWindow::connectPanes() {
    connect(actions, &WorkspaceActions::triggered, this, &WorkspaceWindow::carryOut);
    connect(&actions->search(), &QLineEdit::textChanged, this,
            [this](const QString& text) { uses.model.history().setSearch(text.toStdString()); });
    connect(pane, &HistoryPane::retryTriggered, this, &WorkspaceWindow::retry);
    connect(pane, &HistoryPane::actionTriggered, this, &WorkspaceWindow::follow);
    connect(pane, &HistoryPane::deletionRequested, this, &WorkspaceWindow::deleteSnapshot);
    connect(pane, &HistoryPane::captureCancelled, this, [this] { uses.model.cancelCapture(); });
    connect(inspector, &InspectorView::actionTriggered, this, &WorkspaceWindow::act);
    connect(inspector, &InspectorView::closed, this,
            [this] { uses.model.history().setSelected({}); });
}

void WorkspaceWindow::followModel() {
    refreshing.setSingleShot(true);
    refreshing.setInterval(0);
    connect(&refreshing, &QTimer::timeout, this, &WorkspaceWindow::refresh);
    const auto later = [this] { refreshing.start(); };
    auto& model = uses.model;
    for (Observable* part : std::initializer_list<Observable*>{
             &model.state(), &model.history(), &model.imports(), &model.scanProgress(),
             &model.folderAccess(), &model.growth(), &model.digest(), &uses.viewSettings,
             &uses.memory, &uses.preferences})
        connect(part, &Observable::changed, this, later);
    connect(pane, &HistoryPane::contentChanged, this, later);
}

void WorkspaceWindow::refresh() {
    refreshPage();
    refreshActions();
    const auto& history = uses.model.history();
    sidebar->present(sidebarRows({.workspace = history.place().workspace(),
                                  .systemFilters = history.place().systemFilters(),
                                  .openSnapshot = history.place().snapshot(),
                                  .counts = history.sidebarCounts(),
                                  .isLoaded = uses.model.state().loaded(),
                                  .canSave = mayChange()},
                                 uses.model.state().journal()->baselines, Calendar()));
    pane->refresh();
    refreshInspector();
    fitColumns();
}

void WorkspaceWindow::refreshPage() {
    const auto& state = uses.model.state();
    managesFolders = managesFolders && state.isRunning(Operation::managingFolders);
    const bool choosing = managesFolders || state.isRunning(Operation::choosingFolders);
    const bool wasChoosing = pages->currentWidget() == folders;
    if (choosing && !wasChoosing)
        folders->begin(!read(uses.preferences, preferenceKeys::folderSetupCompleted));
    pages->setCurrentIndex(choosing ? 1 : 0);
    if (wasChoosing && !choosing)
        pane->content()->setFocus();
}

bool WorkspaceWindow::mayChange() const {
    const auto& state = uses.model.state();
    return state.canRecord() && !state.busy();
}

void WorkspaceWindow::refreshActions() {
    const auto& state = uses.model.state();
    const auto& history = uses.model.history();
    actions->refresh(
        {.isBusy = state.busy(),
         .isChecking = state.isAnyRunning({Operation::capturing, Operation::capturingInSetup}),
         .isRecording = state.canRecord(),
         .canChangeRecording = uses.model.canChangeRecording(),
         .canExport = !history.presentation().events.empty() && !history.isComparing()
                      && !pane->showsFolders() && !pane->showsStorage(),
         .isDark = isDark(palette())});
    actions->setEnabled(Command::saveSnapshot, mayChange());
    actions->setEnabled(Command::importHistory, mayChange());
    // Going to another place clears the text of the search.
    if (const auto text = QString::fromStdString(history.place().search());
        actions->search().text() != text) {
        const QSignalBlocker blocker(actions->search());
        actions->search().setText(text);
    }
}

void WorkspaceWindow::refreshInspector() {
    const auto& history = uses.model.history();
    const auto& selected = history.selection().event();
    const auto latest = uses.model.state().latest();
    const Uuid snapshot = latest ? latest->id : Uuid();
    if (inspected && inspected->first.object() == selected.object()
        && inspected->second == snapshot)
        return;
    inspected = {selected, snapshot};
    inspector->present(selected ? std::optional(inspectionOf(*selected, latest ? &*latest : nullptr,
                                                             history.isStateComparison()))
                                : std::nullopt);
}

void WorkspaceWindow::fitColumns() {
    const bool isNarrow = width() < roomForBoth;
    const bool hasSelection = uses.model.history().selection().event().has_value();
    // The sizes of folders need the whole width, and no event is selected there. A chart needs it
    // until an event is selected.
    const bool showsDetails =
        !pane->showsFolders() && (hasSelection || (!isNarrow && !pane->showsStorage()));
    const bool isOpened = showsDetails && inspector->isHidden();
    inspector->setVisible(showsDetails);
    sidebar->setVisible(width() >= roomForSidebar && !(isNarrow && showsDetails));
    if (isNarrow && isOpened)
        columns->setSizes({0, width() * 3 / 5, width() * 2 / 5});
}

void WorkspaceWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    uses.model.digest().windowShown();
}

void WorkspaceWindow::hideEvent(QHideEvent* event) {
    QMainWindow::hideEvent(event);
    uses.model.digest().windowHidden();
}

void WorkspaceWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    fitColumns();
}

void WorkspaceWindow::closeEvent(QCloseEvent* event) {
    noteLayout();
    QMainWindow::closeEvent(event);
}

void WorkspaceWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::PaletteChange)
        return;
    // The symbol in the inspector has a colour of the old palette.
    inspected.reset();
    refreshing.start();
}

void WorkspaceWindow::carryOut(Command command) {
    auto& model = uses.model;
    switch (command) {
    case Command::checkNow:
        return uses.tasks.start(model.scan());
    case Command::changeRecording:
        return model.setRecordingMode(model.state().canRecord() ? RecordingMode::paused
                                                                : RecordingMode::recording);
    case Command::exportHistory:
        return exportHistory();
    case Command::darkMode:
        return setDark(!isDark(palette()));
    case Command::settings:
        return settingsRequested();
    case Command::saveSnapshot:
        return follow(EmptyState::Action::saveSnapshot);
    case Command::coverage:
        return showCoverage();
    case Command::monitoredFolders:
        return manageFolders();
    case Command::importHistory:
        return importHistory();
    case Command::searchHistory:
        return searchPanelRequested();
    case Command::quit:
        return QApplication::quit();
    case Command::find:
        return actions->search().setFocus(Qt::ShortcutFocusReason);
    case Command::largerText:
        return uses.viewSettings.changeListingTextSize(1);
    case Command::smallerText:
        return uses.viewSettings.changeListingTextSize(-1);
    case Command::normalText:
        return uses.viewSettings.resetListingTextSize();
    case Command::nextPane:
        return goToPane(1);
    case Command::previousPane:
        return goToPane(-1);
    case Command::about:
        return showVersion();
    }
}

void WorkspaceWindow::act(InspectionCommand command) {
    const auto selected = uses.model.history().selection().event();
    if (!selected)
        return;
    if (command == InspectionCommand::copyIdentifier && selected->identifier)
        QApplication::clipboard()->setText(QString::fromStdString(*selected->identifier));
    else if (command == InspectionCommand::inspectFolderSizes)
        pane->inspectFolders(selected);
    else if (command == InspectionCommand::copyClip && selected->memory)
        uses.clipboard.copyAgain(*selected->memory);
    else if (command == InspectionCommand::togglePin && selected->memory)
        togglePin(selected->memory->id);
}

void WorkspaceWindow::togglePin(const std::string& id) {
    try {
        uses.memory.togglePin(id);
    } catch (const Error& error) {
        QMessageBox::warning(this, windowTitle(), asPlainText(wordsHere(error.what())));
    }
}

void WorkspaceWindow::retry(WorkspaceMessage::Retry what) {
    if (what == WorkspaceMessage::Retry::readHistory)
        uses.tasks.start(uses.model.start());
    else
        uses.tasks.start(uses.model.scan());
}

void WorkspaceWindow::follow(EmptyState::Action action) {
    switch (action) {
    case EmptyState::Action::checkNow:
        return uses.tasks.start(uses.model.scan());
    case EmptyState::Action::openCoverage:
        return showCoverage();
    case EmptyState::Action::saveSnapshot:
        return SaveSnapshotDialog(uses.model, uses.tasks, this).run();
    case EmptyState::Action::none:
        return;
    }
}

void WorkspaceWindow::manageFolders() {
    uses.model.beginFolderManagement();
    managesFolders = true;
    refreshing.start();
}

void WorkspaceWindow::setDark(bool isDark) {
    uses.preferences.set(preferenceKeys::appearanceMode.name,
                         std::string(isDark ? "dark" : "light"));
    refreshing.start();
}

void WorkspaceWindow::showCoverage() {
    CoverageDialog(CoverageList::of(uses.model.history().observationCoverage(), Calendar()), this)
        .exec();
}

void WorkspaceWindow::exportHistory() {
    auto& history = uses.model.history();
    history.beginExport();
    if (const auto& report = history.exportReport())
        ExportDialog(*report, uses.tasks, this).exec();
    history.endExport();
}

void WorkspaceWindow::importHistory() {
    ImportDialog dialog(uses.model, uses.tasks, this);
    dialog.readAgain();
    dialog.exec();
}

void WorkspaceWindow::deleteSnapshot(const Uuid& id) {
    const auto& baselines = uses.model.state().journal()->baselines;
    const auto found = std::ranges::find(baselines, id, &Baseline::id);
    if (found == baselines.end())
        return;
    const auto texts = SnapshotDeletion::of(*found);
    QMessageBox question(QMessageBox::Question, {}, asPlainText(isolated(shownText(texts.title))),
                         QMessageBox::Cancel, this);
    question.setInformativeText(wordsHere(texts.explanation));
    auto* confirm = question.addButton(shownText(texts.confirmLabel), QMessageBox::DestructiveRole);
    question.setDefaultButton(QMessageBox::Cancel);
    question.exec();
    if (question.clickedButton() == confirm)
        uses.tasks.start(remove(uses.model.snapshots(), id));
}

void WorkspaceWindow::showVersion() {
    const QString text =
        tr("Tidemark %1").arg(QCoreApplication::applicationVersion()) + QStringLiteral("\n\n")
        + tr("Records what changed on this computer. Everything stays on this computer.");
    QMessageBox box(QMessageBox::NoIcon, tr("About Tidemark"), text, QMessageBox::Close, this);
    box.setIconPixmap(windowIcon().pixmap(64));
    box.exec();
}

void WorkspaceWindow::goToPane(int step) {
    const std::array<QWidget*, 3> panes{sidebar, pane->content(), inspector};
    const int count = static_cast<int>(panes.size());
    int at = 0;
    for (int i = 0; i < count; ++i)
        if (panes[static_cast<std::size_t>(i)]->isAncestorOf(QApplication::focusWidget())
            || panes[static_cast<std::size_t>(i)]->hasFocus())
            at = i;
    for (int tries = 0; tries < count; ++tries) {
        at = (at + step + count) % count;
        if (QWidget* next = panes[static_cast<std::size_t>(at)]; next->isVisible())
            return next->setFocus(step > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    }
}

} // namespace tidemark
