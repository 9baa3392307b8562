#include "views/workspace/HistoryPane.h"

#include "app/settings/PlaceSource.h"
#include "core/presentation/FolderSizeTable.h"
#include "core/presentation/SnapshotBar.h"
#include "core/presentation/WindowControl.h"
#include "core/presentation/WorkspaceText.h"
#include "views/base/Labels.h"
#include "views/base/ShownText.h"
#include "views/folders/FolderInspectorView.h"
#include "views/storage/StorageOverTimeView.h"
#include "views/workspace/CaptureComparisonBar.h"
#include "views/workspace/DigestCardView.h"
#include "views/workspace/EmptyStateView.h"
#include "views/workspace/FooterView.h"
#include "views/workspace/HistoryHead.h"
#include "views/workspace/MessageBar.h"
#include "views/workspace/SnapshotBarView.h"
#include "views/workspace/TimelineView.h"

#include <QStackedWidget>
#include <QVBoxLayout>

namespace tidemark {

namespace {

constexpr int narrowest = 340;
/// Milliseconds after which a wait is announced.
constexpr int patience = 300;

QString momentText(const Moment& moment) {
    return isolated(QString::fromStdString(label(moment, Calendar())));
}

QString rangeText(std::string_view range) {
    return QString::fromUtf8(range);
}

} // namespace

HistoryPane::HistoryPane(const Uses& used, QWidget* parent)
    : QWidget(parent), uses(used), head(new HistoryHead), snapshotBar(new SnapshotBarView),
      comparisonBar(new CaptureComparisonBar), messages(new MessageBar), digest(new DigestCardView),
      timeline(new TimelineView), folders(new FolderInspectorView),
      storage(new StorageOverTimeView(used.model.growth())), empty(new EmptyStateView),
      waiting(labels::note({})), stack(new QStackedWidget), footer(new FooterView) {
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setMinimumWidth(narrowest);
    waiting->setAlignment(Qt::AlignCenter);
    for (QWidget* page :
         std::initializer_list<QWidget*>{timeline, empty, waiting, folders, storage})
        stack->addWidget(page);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(head);
    column->addWidget(snapshotBar);
    column->addWidget(comparisonBar);
    column->addWidget(labels::separator());
    column->addWidget(messages);
    // A layout would keep its margins while the card is hidden.
    auto* aroundDigest = new QWidget;
    auto* card = new QVBoxLayout(aroundDigest);
    card->setContentsMargins(14, 12, 14, 0);
    card->addWidget(digest);
    column->addWidget(aroundDigest);
    column->addWidget(stack, 1);
    column->addWidget(labels::separator());
    column->addWidget(footer);
    waitingSoon.setSingleShot(true);
    waitingSoon.setInterval(patience);
    waitingSoon.callOnTimeout(this, &HistoryPane::showWaiting);
    connectParts();
}

void HistoryPane::connectParts() {
    auto& history = uses.model.history();
    connect(head, &HistoryHead::windowChosen, this,
            [&history](const QString& range) { history.setRange(range.toStdString()); });
    connect(head, &HistoryHead::customDaysChosen, this,
            [&history](int days) { history.setCustomWindowDays(days); });
    connect(head, &HistoryHead::coverageRequested, this,
            [this] { Q_EMIT actionTriggered(EmptyState::Action::openCoverage); });
    connect(snapshotBar, &SnapshotBarView::modeChosen, this,
            [&history](SnapshotViewMode mode) { history.setSnapshotViewMode(mode); });
    connect(snapshotBar, &SnapshotBarView::deletionRequested, this, [this, &history] {
        if (const auto open = history.openBaseline())
            Q_EMIT deletionRequested(open->id);
    });
    connect(timeline, &TimelineView::eventChosen, this,
            [&history](const OptionalShared<Event>& event) { history.setSelected(event); });
    connect(messages, &MessageBar::retryTriggered, this, &HistoryPane::retryTriggered);
    connect(messages, &MessageBar::noticeClosed, this,
            [this] { uses.model.imports().initialHistoryMessage = std::nullopt; });
    connect(empty, &EmptyStateView::actionTriggered, this, &HistoryPane::actionTriggered);
    connect(folders, &FolderInspectorView::contentChanged, this, &HistoryPane::contentChanged);
    connect(timeline, &TimelineView::gapsToggled, this, [this] {
        shownRevision = 0;
        Q_EMIT contentChanged();
    });
    connect(storage, &StorageOverTimeView::eventChosen, this,
            [&history](const OptionalShared<Event>& event) { history.setSelected(event); });
    connect(storage, &StorageOverTimeView::comparisonRequested, this, &HistoryPane::compare);
    const auto showStorage = [&history] {
        history.navigate(WorkspaceDestination::storageOverTime, true);
    };
    connect(comparisonBar, &CaptureComparisonBar::closed, this, showStorage);
    connect(digest, &DigestCardView::growthRequested, this, showStorage);
    connect(digest, &DigestCardView::closed, this, [this] { uses.model.digest().dismiss(); });
    connect(digest, &DigestCardView::eventChosen, this,
            [&history](const Shared<Event>& event) { history.openEvent(event); });
    connect(footer, &FooterView::cancelled, this, &HistoryPane::captureCancelled);
}

bool HistoryPane::showsFolders() const {
    const auto& place = uses.model.history().place();
    return place.workspace() == WorkspaceDestination::folderSizes && !place.snapshot();
}

bool HistoryPane::showsStorage() const {
    const auto& history = uses.model.history();
    return history.place().workspace() == WorkspaceDestination::storageOverTime
           && !history.place().snapshot() && !history.comparedCaptures();
}

/// True when only the time window limits what the list shows.
bool HistoryPane::isWholeTimeline() const {
    const auto& history = uses.model.history();
    const auto& place = history.place();
    return place.workspace() == WorkspaceDestination::timeline && !place.snapshot()
           && place.search().empty() && place.systemFilters().empty()
           && !history.comparedCaptures();
}

void HistoryPane::compare(const Uuid& earlier, const Uuid& later) {
    const auto& journal = *uses.model.state().journal();
    auto from = keptMoment(journal, earlier);
    auto to = keptMoment(journal, later);
    if (from && to)
        uses.model.history().compareCaptures({std::move(*from), std::move(*to)});
}

bool HistoryPane::lacksSnapshot() const {
    const auto& history = uses.model.history();
    return history.place().workspace() == WorkspaceDestination::snapshots
           && !history.place().snapshot() && !history.comparedCaptures();
}

QWidget* HistoryPane::content() const {
    return stack->currentWidget();
}

void HistoryPane::inspectFolders(const OptionalShared<Event>& event) {
    folders->inspect(event);
    uses.model.history().navigate(WorkspaceDestination::folderSizes, true);
}

void HistoryPane::refresh() {
    refreshContent();
    refreshDigest();
    refreshHead();
    refreshMessages();
    const auto& state = uses.model.state();
    const auto& stage = *uses.model.scanProgress().stage;
    const bool isCapturing =
        state.isAnyRunning({Operation::capturing, Operation::capturingInSetup});
    footer->present(isCapturing ? std::optional(stage ? wordsHere(*stage) : tr("Capturing…"))
                                : std::nullopt);
}

void HistoryPane::refreshHead() {
    const auto& history = uses.model.history();
    const auto open = history.openBaseline();
    const auto coverage = history.observationCoverage();
    HistoryHead::Content content;
    content.title = open ? QString::fromStdString(open->name).simplified()
                         : wordsHere(facts(history.place().workspace()).label);
    content.hasCoverageProblems = !coverage.gaps.empty() || !coverage.accessIssues.empty();
    const auto compared = history.comparedCaptures();
    if (compared)
        content.title = tr("Compared Captures");
    if (showsFolders()) {
        content.summary = folders->summary();
    } else if (showsStorage()) {
        content.summary = storage->summary();
    } else if (!lacksSnapshot() && uses.model.state().loaded()) {
        content.summary = wordsHere(workspaceText::header(history.presentation().events.size(),
                                                          history.isStateComparison()));
    }
    if (!open && !compared && !showsFolders() && !showsStorage() && !lacksSnapshot()) {
        for (const auto& option :
             windowOptions(history.place().range(), history.place().customWindowDays())) {
            if (option.isSelected)
                content.window = static_cast<int>(content.windows.size());
            content.windows.push_back({isolated(shownText(option.label)), rangeText(option.range)});
        }
        if (history.place().range() == rawValue(HistoryTimeWindow::custom))
            content.customDays = static_cast<int>(history.place().customWindowDays());
    }
    head->present(content);
    comparisonBar->setVisible(compared.has_value());
    if (compared)
        comparisonBar->present(momentText(compared->from), momentText(compared->to));
    snapshotBar->setVisible(open.has_value());
    if (!open)
        return;
    const auto latest = uses.model.state().latest();
    snapshotBar->present(
        tidemark::snapshotBar({.snapshot = *open,
                               .latest = latest ? &*latest : nullptr,
                               .mode = history.place().viewMode(),
                               .isComparing = history.isComparing(),
                               .isIncomplete = history.hasIncompleteSnapshotHistory()},
                              Calendar()));
}

void HistoryPane::refreshMessages() {
    const auto& state = uses.model.state();
    const auto& access = uses.model.folderAccess();
    WorkspaceProblems problems;
    problems.error = *state.error;
    problems.isLoaded = state.loaded();
    problems.canCheck = state.canRecord() && !state.busy();
    problems.activity = *state.activityError;
    problems.memory = uses.memory.failure();
    problems.settings = uses.preferences.problem();
    if (!access.messageIsSuccess())
        problems.folders = access.message();
    problems.initialHistory = *uses.model.imports().initialHistoryMessage;
    messages->present(workspaceMessages(problems));
}

void HistoryPane::refreshContent() {
    const auto& history = uses.model.history();
    const auto& state = uses.model.state();
    if (history.isComparing() || (!state.loaded() && !*state.error)) {
        // What was shown stays for a moment, because most waits are shorter.
        if (!waitingSoon.isActive() && stack->currentWidget() != waiting)
            waitingSoon.start();
        return;
    }
    waitingSoon.stop();
    refreshList();
    if (showsFolders()) {
        folders->present(*state.journal());
        stack->setCurrentWidget(folders);
    } else if (showsStorage()) {
        storage->refresh();
        stack->setCurrentWidget(storage);
    } else if (!history.presentation().events.empty() && !lacksSnapshot()) {
        stack->setCurrentWidget(timeline);
    } else {
        empty->present(emptyStateNow());
        stack->setCurrentWidget(empty);
    }
}

void HistoryPane::showWaiting() {
    waiting->setText(uses.model.history().isComparing() ? wordsHere(workspaceText::comparing)
                                                        : tr("Reading the history…"));
    stack->setCurrentWidget(waiting);
}

void HistoryPane::refreshList() {
    const auto& history = uses.model.history();
    timeline->setTextScale(uses.viewSettings.listingTextScale());
    folders->setTextScale(uses.viewSettings.listingTextScale());
    storage->setTextScale(uses.viewSettings.listingTextScale());
    if (shownRevision != history.presentationRevision()) {
        shownRevision = history.presentationRevision();
        timeline->present(history.presentation(), *uses.model.state().observationNow, shownGaps());
    }
    timeline->select(history.selection().event() ? &history.selection().event()->id : nullptr);
    if (shownScrollRequest != history.selection().scrollRequest()) {
        shownScrollRequest = history.selection().scrollRequest();
        timeline->scrollTo(timeline->currentIndex());
    }
}

/// The gaps in the period that the list shows.
std::vector<GapRow> HistoryPane::shownGaps() const {
    const auto& days = uses.model.history().presentation().days;
    if (!isWholeTimeline() || days.empty())
        return {};
    return uses.model.growth().gaps(days.back().id);
}

void HistoryPane::refreshDigest() {
    const auto& card = uses.model.digest().shown();
    digest->parentWidget()->setVisible(card.has_value() && isWholeTimeline());
    if (card)
        digest->present(*card);
}

EmptyState HistoryPane::emptyStateNow() const {
    const auto& history = uses.model.history();
    const auto& state = uses.model.state();
    const auto latest = state.latest();
    return emptyState(
        {.isUnreadable = !state.loaded() && *state.error,
         .latest = latest ? &*latest : nullptr,
         .coverage = history.observationCoverage(),
         .captures = state.journal()->snapshots.size(),
         .place = history.place().workspace(),
         .isSnapshotOpen = history.openBaseline().has_value(),
         .canCapture = state.canRecord() && !state.busy(),
         .absentSource = absentSourceOf(history.place().workspace(), uses.sources())});
}

} // namespace tidemark
