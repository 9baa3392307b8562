#pragma once

#include "app/base/TaskScope.h"
#include "app/memory/ClipboardHistory.h"
#include "app/memory/MemoryHistoryService.h"
#include "app/model/AppModel.h"
#include "app/preferences/SettingSource.h"
#include "app/settings/ViewSettings.h"
#include "core/presentation/EmptyState.h"
#include "core/presentation/EventInspection.h"
#include "core/presentation/WorkspaceMessage.h"
#include "views/workspace/WorkspaceActions.h"

#include <QMainWindow>
#include <QTimer>
#include <functional>

class QSplitter;
class QStackedWidget;

namespace tidemark {

class FolderManagerView;
class HistoryPane;
class InspectorView;
class SidebarView;

/// The main window: sidebar, list and inspector. It shows the state of the model, and each of its
/// controls carries out a command of the model; the texts come from `core/presentation`.
class WorkspaceWindow : public QMainWindow {
    Q_OBJECT

public:
    /// All of it outlives the window.
    struct Uses {
        AppModel& model;
        MemoryHistoryService& memory;
        ClipboardHistory& clipboard;
        ViewSettings& viewSettings;
        Preferences& preferences;
        /// Asked each time, since a source may be found missing later.
        std::function<SettingSources()> sources;
        /// What the commands run in.
        TaskScope& tasks;
    };

    explicit WorkspaceWindow(const Uses& used);

    /// Shows the choice of the folders that are observed.
    void manageFolders();
    /// Lets the user choose recent installations to import.
    void importHistory();

Q_SIGNALS:
    void settingsRequested();
    void searchPanelRequested();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    using Command = WorkspaceActions::Command;

    /// The size of the window and of its columns is kept in the settings.
    void restoreLayout();
    void noteLayout();
    void connectSidebar();
    void connectPanes();
    void followModel();

    void refresh();
    /// True when a capture can be taken, and what it finds can be saved.
    bool mayChange() const;
    void refreshPage();
    void refreshActions();
    void refreshInspector();
    void fitColumns();

    void carryOut(Command command);
    void act(InspectionCommand command);
    void togglePin(const std::string& id);
    void retry(WorkspaceMessage::Retry what);
    void follow(EmptyState::Action action);
    void setDark(bool isDark);
    void showCoverage();
    void exportHistory();
    void deleteSnapshot(const Uuid& id);
    void showVersion();
    void goToPane(int step);

    const Uses uses;
    /// One refresh for all changes of one turn of the event loop.
    QTimer refreshing;
    WorkspaceActions* actions;
    /// The three columns, or the choice of folders.
    QStackedWidget* pages;
    FolderManagerView* folders;
    QSplitter* columns;
    SidebarView* sidebar;
    HistoryPane* pane;
    InspectorView* inspector;
    /// True when the running change of the folders is the user's in this window, and not that of
    /// another process.
    bool managesFolders = false;
    /// The event and the snapshot that the inspector shows. A refresh that changes neither does not
    /// touch the inspector.
    std::optional<std::pair<OptionalShared<Event>, Uuid>> inspected;
};

} // namespace tidemark
