#pragma once

#include "app/search/SearchShortcut.h"
#include "demo/DemoRecorder.h"
#include "views/base/Appearance.h"
#include "views/search/SearchPanelView.h"
#include "views/settings/SettingsView.h"
#include "views/workspace/WorkspaceWindow.h"

#include <QObject>

namespace tidemark::demo {

/// The windows over a made-up history, and how one opens the other. Main thread only.
class DemoWindows : public QObject {
    Q_OBJECT

public:
    /// `recorder` outlives it.
    explicit DemoWindows(DemoRecorder& recorder);

    WorkspaceWindow& workspace() { return window; }
    SettingsView& settings() { return settingsView; }
    SearchPanelView& search() { return searchPanel; }

private:
    const WorkspaceWindow::Uses uses;
    SearchShortcut shortcut;
    WorkspaceWindow window;
    SettingsView settingsView;
    SearchPanelView searchPanel;
};

} // namespace tidemark::demo
