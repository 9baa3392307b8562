#pragma once

#include "app/memory/MemoryHistoryService.h"
#include "app/model/AppModel.h"
#include "app/preferences/SettingSource.h"
#include "app/settings/ViewSettings.h"
#include "core/presentation/EmptyState.h"
#include "core/presentation/WorkspaceMessage.h"

#include <QTimer>
#include <QWidget>
#include <functional>

class QLabel;
class QStackedWidget;

namespace tidemark {

class CaptureComparisonBar;
class DigestCardView;
class EmptyStateView;
class FolderInspectorView;
class FooterView;
class HistoryHead;
class MessageBar;
class SnapshotBarView;
class StorageOverTimeView;
class TimelineView;

/// The middle column: the head, the messages, and below them the list, the folder sizes, or why
/// there is nothing to show. It reads the controller when `refresh` is called, and moves the user's
/// place in the history itself.
class HistoryPane : public QWidget {
    Q_OBJECT

public:
    /// All of it outlives the pane.
    struct Uses {
        AppModel& model;
        MemoryHistoryService& memory;
        ViewSettings& viewSettings;
        const Preferences& preferences;
        /// Asked each time, since a source may be found missing later.
        std::function<SettingSources()> sources;
    };

    explicit HistoryPane(const Uses& used, QWidget* parent = nullptr);

    void refresh();
    /// Shows the folder sizes that an event recorded.
    void inspectFolders(const OptionalShared<Event>& event);
    bool showsFolders() const;
    bool showsStorage() const;
    /// The widget that gets the keyboard focus.
    QWidget* content() const;

Q_SIGNALS:
    // Commands that another object carries out.
    void retryTriggered(tidemark::WorkspaceMessage::Retry retry);
    void actionTriggered(tidemark::EmptyState::Action action);
    void deletionRequested(const tidemark::Uuid& snapshot);
    void captureCancelled();
    /// The user changed what the pane shows by a choice that the pane itself keeps.
    void contentChanged();

private:
    /// The user is at the snapshots and has opened none.
    bool lacksSnapshot() const;
    void connectParts();
    void refreshHead();
    void refreshMessages();
    void refreshContent();
    void refreshList();
    void refreshDigest();
    bool isWholeTimeline() const;
    std::vector<GapRow> shownGaps() const;
    void compare(const Uuid& earlier, const Uuid& later);
    void showWaiting();
    EmptyState emptyStateNow() const;

    const Uses uses;
    HistoryHead* head;
    SnapshotBarView* snapshotBar;
    CaptureComparisonBar* comparisonBar;
    MessageBar* messages;
    DigestCardView* digest;
    TimelineView* timeline;
    FolderInspectorView* folders;
    StorageOverTimeView* storage;
    EmptyStateView* empty;
    /// Stands in place of the list while that is being read or compared.
    QLabel* waiting;
    QStackedWidget* stack;
    FooterView* footer;
    QTimer waitingSoon;
    std::uint64_t shownRevision = 0;
    Uuid shownScrollRequest;
};

} // namespace tidemark
