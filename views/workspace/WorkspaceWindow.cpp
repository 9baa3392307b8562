#include "views/workspace/WorkspaceWindow.h"

#include "app/preferences/PreferenceKeys.h"
#include "app/settings/PlaceSource.h"
#include "core/presentation/CoverageList.h"
#include "core/presentation/SnapshotBar.h"
#include "core/presentation/SystemWords.h"
#include "core/presentation/WindowControl.h"
#include "core/presentation/WorkspaceText.h"
#include "views/base/ShownText.h"
#include "views/base/Symbols.h"
#include "views/base/TextColor.h"
#include "views/folders/FolderManagerView.h"
#include "views/workspace/CoverageDialog.h"
#include "views/workspace/EmptyStateView.h"
#include "views/workspace/InspectorView.h"
#include "views/workspace/MessageBar.h"
#include "views/workspace/SaveSnapshotDialog.h"
#include "views/workspace/SidebarDelegate.h"
#include "views/workspace/SidebarModel.h"
#include "views/workspace/TimelineView.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

namespace tidemark {

namespace {

constexpr QSize firstSize(1180, 760);

QString spoken(std::string_view text) {
    return shownText(systemWords::shown(text));
}

/// Replaces the entries of a choice without announcing that as a choice of the user.
void fill(QComboBox& choice, const std::vector<std::pair<QString, QString>>& entries,
          int selected) {
    const QSignalBlocker blocker(choice);
    if (choice.count() != static_cast<int>(entries.size()))
        choice.clear();
    for (int i = 0; i < static_cast<int>(entries.size()); ++i) {
        const auto& [label, value] = entries[static_cast<std::size_t>(i)];
        if (i >= choice.count())
            choice.addItem(label, value);
        choice.setItemText(i, label);
        choice.setItemData(i, value);
    }
    choice.setCurrentIndex(selected);
}

} // namespace

WorkspaceWindow::WorkspaceWindow(const Uses& used)
    : uses(used), folders(new FolderManagerView(used.model, used.tasks)),
      places(new SidebarModel(this)), timeline(new TimelineView), empty(new EmptyStateView),
      waiting(new QLabel), inspector(new InspectorView), messages(new MessageBar),
      title(new QLabel), header(new QLabel), progress(new QLabel), timeWindow(new QComboBox),
      snapshotNote(new QLabel), snapshotMode(new QComboBox), search(new QLineEdit) {
    setWindowTitle(QStringLiteral("Tidemark"));
    resize(firstSize);
    makeToolbar();
    makeMenus();
    auto* columns = new QSplitter;
    columns->setChildrenCollapsible(true);
    for (QWidget* column : {makeSidebar(), makeMiddle(), static_cast<QWidget*>(inspector)})
        columns->addWidget(column);
    columns->setStretchFactor(1, 1);
    columns->setSizes({230, 600, 350});
    pages = new QStackedWidget;
    pages->addWidget(columns);
    pages->addWidget(folders);
    setCentralWidget(pages);

    auto* footer = new QLabel(spoken(workspaceText::footer));
    textColor::dim(*footer);
    statusBar()->addWidget(footer, 1);
    statusBar()->addPermanentWidget(progress);
    followModel();
    refresh();
}

QWidget* WorkspaceWindow::makeSidebar() {
    sidebar = new QListView;
    sidebar->setModel(places);
    sidebar->setItemDelegate(new SidebarDelegate(sidebar));
    sidebar->setFrameShape(QFrame::NoFrame);
    sidebar->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    sidebar->setVerticalScrollMode(QListView::ScrollPerPixel);
    sidebar->setContextMenuPolicy(Qt::CustomContextMenu);
    sidebar->setAccessibleName(tr("Places"));
    sidebar->setMinimumWidth(160);
    connect(sidebar->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& index) {
                if (!isFollowing)
                    choosePlace(index);
            });
    const auto press = [this](const QModelIndex& index) {
        if (places->rowAt(index).kind == SidebarRow::Kind::saveSnapshot)
            follow(EmptyState::Action::saveSnapshot);
    };
    connect(sidebar, &QListView::clicked, this, press);
    connect(sidebar, &QListView::activated, this, press);
    connect(sidebar, &QListView::customContextMenuRequested, this,
            &WorkspaceWindow::showSidebarMenu);
    return sidebar;
}

QLayout* WorkspaceWindow::makeHead() {
    QFont font = title->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.4);
    title->setFont(font);
    textColor::dim(*header);
    auto* coverage = new QPushButton(spoken(workspaceText::openCoverage));
    connect(coverage, &QPushButton::clicked, this, &WorkspaceWindow::showCoverage);
    timeWindow->setAccessibleName(tr("Time window"));
    connect(timeWindow, &QComboBox::activated, this, [this](int index) {
        uses.model.history().setRange(timeWindow->itemData(index).toString().toStdString());
    });

    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(title);
    texts->addWidget(header);
    auto* head = new QHBoxLayout;
    head->setContentsMargins(16, 12, 16, 8);
    head->addLayout(texts, 1);
    head->addWidget(coverage);
    head->addWidget(timeWindow);
    return head;
}

QWidget* WorkspaceWindow::makeMiddle() {
    snapshotBar = new QWidget;
    auto* bar = new QHBoxLayout(snapshotBar);
    bar->setContentsMargins(16, 0, 16, 8);
    auto* label = new QLabel(spoken(workspaceText::snapshotView));
    label->setBuddy(snapshotMode);
    snapshotMode->setAccessibleName(spoken(workspaceText::snapshotView));
    connect(snapshotMode, &QComboBox::activated, this, [this](int index) {
        const auto text = snapshotMode->itemData(index).toString().toStdString();
        if (const auto mode = json::fromRawValue<SnapshotViewMode>(text))
            uses.model.history().setSnapshotViewMode(*mode);
    });
    textColor::dim(*snapshotNote);
    snapshotNote->setWordWrap(true);
    bar->addWidget(label);
    bar->addWidget(snapshotMode);
    bar->addWidget(snapshotNote, 1);

    waiting->setAlignment(Qt::AlignCenter);
    waiting->setBackgroundRole(QPalette::Base);
    waiting->setAutoFillBackground(true);
    stack = new QStackedWidget;
    for (QWidget* page : std::initializer_list<QWidget*>{timeline, empty, waiting})
        stack->addWidget(page);
    auto* middle = new QWidget;
    middle->setMinimumWidth(320);
    auto* column = new QVBoxLayout(middle);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(makeHead());
    column->addWidget(snapshotBar);
    column->addWidget(messages);
    column->addWidget(stack, 1);
    connect(timeline, &TimelineView::eventChosen, this, [this](const OptionalShared<Event>& event) {
        uses.model.history().setSelected(event);
    });
    connect(messages, &MessageBar::retryTriggered, this, &WorkspaceWindow::retry);
    connect(empty, &EmptyStateView::actionTriggered, this, &WorkspaceWindow::follow);
    connect(inspector, &InspectorView::actionTriggered, this, [this](InspectionCommand command) {
        const auto& selected = uses.model.history().selection().event();
        if (command == InspectionCommand::copyIdentifier && selected && selected->identifier)
            QApplication::clipboard()->setText(QString::fromStdString(*selected->identifier));
    });
    return middle;
}

void WorkspaceWindow::makeToolbar() {
    auto* bar = addToolBar(tr("Toolbar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    for (const auto command : {ToolbarCommand::checkNow, ToolbarCommand::changeRecording}) {
        auto* action = bar->addAction(QString());
        connect(action, &QAction::triggered, this, [this, command] { trigger(command); });
        buttons.emplace(command, action);
    }
    buttons[ToolbarCommand::checkNow]->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_R));
    auto* space = new QWidget;
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(space);
    search->setPlaceholderText(spoken(workspaceText::searchPrompt));
    search->setAccessibleName(spoken(workspaceText::searchPrompt));
    search->setClearButtonEnabled(true);
    search->setMaximumWidth(280);
    connect(search, &QLineEdit::textChanged, this,
            [this](const QString& text) { uses.model.history().setSearch(text.toStdString()); });
    bar->addWidget(search);
}

void WorkspaceWindow::makeMenus() {
    auto* file = menuBar()->addMenu(tr("&File"));
    file->addAction(buttons[ToolbarCommand::checkNow]);
    file->addAction(tr("&Save Snapshot…"), this,
                    [this] { follow(EmptyState::Action::saveSnapshot); });
    file->addAction(tr("Observation &Coverage…"), this, &WorkspaceWindow::showCoverage);
    file->addAction(tr("&Monitored Folders…"), this, &WorkspaceWindow::manageFolders);
    file->addAction(tr("S&ettings…"), QKeySequence(Qt::CTRL | Qt::Key_Comma), this,
                    &WorkspaceWindow::settingsRequested);
    file->addAction(tr("Search &History…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F), this,
                    &WorkspaceWindow::searchPanelRequested);
    file->addSeparator();
    file->addAction(tr("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), qApp, &QApplication::quit);
    auto* view = menuBar()->addMenu(tr("&View"));
    view->addAction(tr("&Find"), QKeySequence(QKeySequence::Find), search,
                    [this] { search->setFocus(); });
    view->addSeparator();
    const auto addSize = [&](const QString& text, const QKeySequence& key, auto change) {
        view->addAction(text, key, this, change);
    };
    addSize(tr("&Increase Listing Text"), QKeySequence(QKeySequence::ZoomIn),
            [this] { uses.viewSettings.changeListingTextSize(1); });
    addSize(tr("&Decrease Listing Text"), QKeySequence(QKeySequence::ZoomOut),
            [this] { uses.viewSettings.changeListingTextSize(-1); });
    addSize(tr("&Reset Listing Text Size"), QKeySequence(Qt::CTRL | Qt::Key_0),
            [this] { uses.viewSettings.resetListingTextSize(); });
}

void WorkspaceWindow::manageFolders() {
    uses.model.beginFolderManagement();
    managesFolders = true;
    refreshing.start();
}

void WorkspaceWindow::followModel() {
    refreshing.setSingleShot(true);
    refreshing.setInterval(0);
    connect(&refreshing, &QTimer::timeout, this, &WorkspaceWindow::refresh);
    const auto later = [this] { refreshing.start(); };
    auto& model = uses.model;
    for (Observable* part : std::initializer_list<Observable*>{
             &model.state(), &model.history(), &model.imports(), &model.scanProgress(),
             &model.folderAccess(), &uses.viewSettings})
        connect(part, &Observable::changed, this, later);
}

void WorkspaceWindow::refresh() {
    refreshPage();
    refreshToolbar();
    refreshSidebar();
    refreshHead();
    refreshMessages();
    refreshList();
    refreshInspector();
}

void WorkspaceWindow::refreshPage() {
    const auto& state = uses.model.state();
    managesFolders = managesFolders && state.isRunning(Operation::managingFolders);
    const bool choosing = managesFolders || state.isRunning(Operation::choosingFolders);
    if (choosing && pages->currentWidget() != folders)
        folders->begin(!read(uses.preferences, preference::folderSetupCompleted));
    pages->setCurrentIndex(choosing ? 1 : 0);
}

void WorkspaceWindow::refreshToolbar() {
    const auto& state = uses.model.state();
    const ToolbarState shown{
        .isBusy = state.busy(),
        .isChecking = state.isAnyRunning({Operation::capturing, Operation::capturingInSetup}),
        .isRecording = state.canRecord(),
        .canChangeRecording = uses.model.canChangeRecording()};
    for (const auto& each : toolbarActions(shown)) {
        const auto found = buttons.find(each.command);
        if (found == buttons.end())
            continue;
        QAction& action = *found->second;
        action.setText(shownText(each.label));
        action.setToolTip(shownText(each.help));
        action.setIcon(symbolIcon(each.symbol));
        action.setEnabled(each.isEnabled);
    }
    const auto& stage = *uses.model.scanProgress().stage;
    progress->setText(stage ? spoken(*stage) : spoken(uses.model.recordingStatus()));
}

void WorkspaceWindow::refreshSidebar() {
    const QScopedValueRollback following(isFollowing, true);
    const auto& history = uses.model.history();
    places->show(sidebarRows({.workspace = history.place().workspace(),
                              .systemFilters = history.place().systemFilters(),
                              .openSnapshot = history.place().snapshot(),
                              .counts = history.sidebarCounts()},
                             uses.model.state().journal()->baselines, Calendar()));
    // The command at the end keeps the keyboard until another row is chosen.
    const auto current = sidebar->currentIndex();
    const bool isCommand = current.isValid() && sidebar->hasFocus()
                           && places->rowAt(current).kind == SidebarRow::Kind::saveSnapshot;
    if (!isCommand)
        sidebar->setCurrentIndex(places->selected());
}

void WorkspaceWindow::refreshHead() {
    const auto& history = uses.model.history();
    // Going to another place has cleared it.
    if (const auto text = QString::fromStdString(history.place().search());
        search->text() != text) {
        const QSignalBlocker blocker(search);
        search->setText(text);
    }
    const auto open = history.openBaseline();
    const auto latest = uses.model.state().latest();
    title->setText(open ? QString::fromStdString(open->name)
                        : spoken(facts(history.place().workspace()).label));
    header->setText(spoken(
        workspaceText::header(history.presentation().events.size(), history.isStateComparison())));
    std::vector<std::pair<QString, QString>> windows;
    int selected = 0;
    for (const auto& option :
         windowOptions(history.place().range(), history.place().customWindowDays())) {
        if (option.isSelected)
            selected = static_cast<int>(windows.size());
        windows.emplace_back(
            shownText(option.label),
            QString::fromUtf8(option.range.data(), static_cast<qsizetype>(option.range.size())));
    }
    fill(*timeWindow, windows, selected);
    timeWindow->setVisible(!open);
    snapshotBar->setVisible(open.has_value());
    if (!open)
        return;
    const auto bar = tidemark::snapshotBar({.snapshot = *open,
                                            .latest = latest ? &*latest : nullptr,
                                            .mode = history.place().viewMode(),
                                            .isComparing = history.isComparing(),
                                            .isIncomplete = history.hasIncompleteSnapshotHistory()},
                                           Calendar());
    std::vector<std::pair<QString, QString>> modes;
    for (const auto& mode : bar.modes)
        modes.emplace_back(shownText(mode.label), QString::fromStdString(mode.label));
    fill(*snapshotMode, modes, history.isStateComparison() ? 1 : 0);
    snapshotNote->setText(isolated(shownText(bar.note)));
}

void WorkspaceWindow::refreshMessages() {
    const auto& state = uses.model.state();
    const auto& folders = uses.model.folderAccess();
    WorkspaceProblems problems;
    problems.error = *state.error;
    problems.isLoaded = state.loaded();
    problems.canCheck = state.canRecord() && !state.busy();
    problems.activity = *state.activityError;
    problems.memory = uses.memory.failure();
    if (!folders.messageIsSuccess())
        problems.folders = folders.message();
    problems.initialHistory = *uses.model.imports().initialHistoryMessage;
    messages->present(workspaceMessages(problems));
}

void WorkspaceWindow::refreshList() {
    const auto& history = uses.model.history();
    timeline->setTextSize(static_cast<int>(uses.viewSettings.listingTextSize()));
    if (shownRevision != history.presentationRevision()) {
        shownRevision = history.presentationRevision();
        timeline->present(history.presentation(), *uses.model.state().observationNow);
    }
    timeline->select(history.selection().event() ? &history.selection().event()->id : nullptr);
    if (const bool isLoading = !uses.model.state().loaded(); isLoading || history.isComparing()) {
        waiting->setText(isLoading ? tr("Reading the history…") : spoken(workspaceText::comparing));
        stack->setCurrentWidget(waiting);
    } else if (!history.presentation().events.empty()) {
        stack->setCurrentWidget(timeline);
    } else {
        empty->present(emptyStateNow());
        stack->setCurrentWidget(empty);
    }
}

EmptyState WorkspaceWindow::emptyStateNow() const {
    const auto& history = uses.model.history();
    const auto& state = uses.model.state();
    const auto latest = state.latest();
    return emptyState({.latest = latest ? &*latest : nullptr,
                       .coverage = history.observationCoverage(),
                       .captures = state.journal()->snapshots.size(),
                       .place = history.place().workspace(),
                       .isSnapshotOpen = history.openBaseline().has_value(),
                       .absentSource = absentSourceOf(history.place().workspace(), uses.sources)});
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
    inspector->present(
        selected ? std::optional(EventInspection::of(*selected, latest ? &*latest : nullptr,
                                                     history.isStateComparison()))
                 : std::nullopt);
}

void WorkspaceWindow::choosePlace(const QModelIndex& index) {
    if (!index.isValid())
        return;
    const SidebarRow row = places->rowAt(index);
    if (row.place)
        uses.model.history().navigate(*row.place, true);
    else if (row.snapshot)
        uses.model.history().openSnapshot(*row.snapshot);
}

void WorkspaceWindow::showSidebarMenu(const QPoint& position) {
    const QModelIndex index = sidebar->indexAt(position);
    if (!index.isValid())
        return;
    const SidebarRow row = places->rowAt(index);
    if (row.filterToggle.empty())
        return;
    QMenu menu;
    QAction* toggle = menu.addAction(shownText(row.filterToggle));
    toggle->setCheckable(true);
    toggle->setChecked(row.isFilter);
    if (menu.exec(sidebar->viewport()->mapToGlobal(position)) == toggle)
        uses.model.history().toggleSystemFilter(*row.place);
}

void WorkspaceWindow::trigger(ToolbarCommand command) {
    if (command == ToolbarCommand::checkNow)
        checkNow();
    return;
    if (command == ToolbarCommand::changeRecording)
        uses.model.setRecordingMode(uses.model.state().canRecord() ? RecordingMode::paused
                                                                   : RecordingMode::recording);
}

void WorkspaceWindow::checkNow() {
    uses.tasks.start(uses.model.scan());
}

void WorkspaceWindow::retry(WorkspaceMessage::Retry what) {
    if (what == WorkspaceMessage::Retry::readHistory)
        uses.tasks.start(uses.model.start());
    else
        checkNow();
}

void WorkspaceWindow::follow(EmptyState::Action action) {
    switch (action) {
    case EmptyState::Action::checkNow:
        checkNow();
        return;
    case EmptyState::Action::openCoverage:
        showCoverage();
        return;
    case EmptyState::Action::saveSnapshot:
        SaveSnapshotDialog(uses.model, uses.tasks, this).run();
        return;
    case EmptyState::Action::none:
        return;
    }
}

void WorkspaceWindow::showCoverage() {
    CoverageDialog(CoverageList::of(uses.model.history().observationCoverage(), Calendar()), this)
        .exec();
}

} // namespace tidemark
