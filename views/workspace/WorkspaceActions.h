#pragma once

#include "core/presentation/Toolbar.h"

#include <QObject>
#include <map>

class QAction;
class QLineEdit;
class QMainWindow;
class QMenu;

namespace tidemark {

/// The actions of the main window, in its toolbar and its menus. What a button of the toolbar says
/// comes from `toolbarActions`.
class WorkspaceActions : public QObject {
    Q_OBJECT

public:
    enum class Command {
        checkNow,
        changeRecording,
        exportHistory,
        darkMode,
        settings,
        saveSnapshot,
        coverage,
        monitoredFolders,
        importHistory,
        searchHistory,
        quit,
        find,
        largerText,
        smallerText,
        normalText,
        nextPane,
        previousPane,
        about,
    };

    /// Adds the toolbar and the menus to `window`, which outlives the actions.
    explicit WorkspaceActions(QMainWindow& window);

    void refresh(const ToolbarState& state);
    void setEnabled(Command command, bool isEnabled);
    /// The search field of the toolbar.
    QLineEdit& search() { return *searchField; }

Q_SIGNALS:
    void triggered(tidemark::WorkspaceActions::Command command);

private:
    QAction* action(Command command) const { return actions.at(command); }
    void makeActions(QMainWindow& window);
    void makeToolbar(QMainWindow& window);
    void makeMenus(QMainWindow& window);

    std::map<Command, QAction*> actions;
    QLineEdit* searchField;
};

} // namespace tidemark
