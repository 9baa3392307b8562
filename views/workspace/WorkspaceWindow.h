#pragma once

#include "app/base/TaskScope.h"
#include "app/memory/MemoryHistoryService.h"
#include "app/model/AppModel.h"
#include "app/preferences/SettingSource.h"
#include "app/settings/ViewSettings.h"
#include "core/presentation/EmptyState.h"
#include "core/presentation/Toolbar.h"
#include "core/presentation/WorkspaceMessage.h"

#include <QMainWindow>
#include <QTimer>
#include <map>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QSplitter;
class QStackedWidget;

namespace tidemark {

class EmptyStateView;
class FolderManagerView;
class InspectorView;
class MessageBar;
class SidebarModel;
class TimelineView;

/// The main window: sidebar, list and inspector. It reads the controller, and each of its controls
/// is a command of the controller; what they say comes from `core/presentation`.
class WorkspaceWindow : public QMainWindow {
    Q_OBJECT

public:
    /// All of it outlives the window.
    struct Uses {
        AppModel& model;
        MemoryHistoryService& memory;
        ViewSettings& viewSettings;
        const Preferences& preferences;
        const SettingSources& sources;
        /// What the commands run in.
        TaskScope& tasks;
    };

    explicit WorkspaceWindow(const Uses& used);

    void manageFolders();

Q_SIGNALS:
    void settingsRequested();
    void searchPanelRequested();

private:
    QWidget* makeSidebar();
    QWidget* makeMiddle();
    QLayout* makeHead();
    void makeToolbar();
    void makeMenus();
    void followModel();

    void refresh();
    void refreshPage();
    void refreshToolbar();
    void refreshSidebar();
    void refreshHead();
    void refreshMessages();
    void refreshList();
    void refreshInspector();

    void choosePlace(const QModelIndex& index);
    void showSidebarMenu(const QPoint& position);
    void trigger(ToolbarCommand command);
    void retry(WorkspaceMessage::Retry what);
    void follow(EmptyState::Action action);
    void checkNow();
    void showCoverage();
    EmptyState emptyStateNow() const;

    const Uses uses;
    /// One refresh for all changes of one turn of the event loop.
    QTimer refreshing;
    /// The three columns, or the choice of folders.
    QStackedWidget* pages = nullptr;
    FolderManagerView* folders;
    SidebarModel* places;
    QListView* sidebar = nullptr;
    TimelineView* timeline;
    EmptyStateView* empty;
    /// Stands in place of the list while that is being read or compared.
    QLabel* waiting;
    QStackedWidget* stack = nullptr;
    InspectorView* inspector;
    MessageBar* messages;
    QLabel* title;
    QLabel* header;
    QLabel* progress;
    QComboBox* timeWindow;
    QWidget* snapshotBar = nullptr;
    QLabel* snapshotNote;
    QComboBox* snapshotMode;
    QLineEdit* search;
    /// The user asked for the choice of folders; other processes may change folders, too.
    bool managesFolders = false;
    /// The selection of the sidebar follows the controller, and is no choice of the user.
    bool isFollowing = false;
    std::map<ToolbarCommand, QAction*> buttons;
    /// The event and the snapshot that the inspector shows, so that a refresh that changes none of
    /// it leaves it alone.
    std::optional<std::pair<OptionalShared<Event>, Uuid>> inspected;
    std::uint64_t shownRevision = 0;
};

} // namespace tidemark
