#pragma once

#include "app/ports/DesktopServices.h"
#include "app/search/SearchShortcut.h"
#include "app/settings/LoginLaunchController.h"
#include "app/settings/ViewSettings.h"
#include "recorder/Recorder.h"
#include "views/base/Appearance.h"
#include "views/search/SearchPanelView.h"
#include "views/settings/SettingsView.h"
#include "views/tray/TrayCompanion.h"
#include "views/workspace/WorkspaceWindow.h"

#include <QObject>
#include <memory>
#include <optional>

namespace tidemark {

/// The windows of the program and the icon beside the clock, and how one opens the other. While the
/// icon is shown, the program goes on without a window. Without the icon, closing the last window
/// ends the program; when the icon disappears while no window is open, a window is opened. Main
/// thread only.
class DesktopWindows : public QObject {
    Q_OBJECT

public:
    /// `recorder` outlives it.
    explicit DesktopWindows(Recorder& recorder);

    void showWindow();
    /// Shows the main window, and in it the event with this identifier if the history has it.
    void showEvent(const std::string& id);
    void showSearch();
    void showSettings();

private:
    void makeSettings();
    void connectWindow();
    void connectTray();
    void setTrayHost(bool isThere);
    void closed();
    static void bringForward(QWidget& widget);

    Recorder& recorder;
    ViewSettings viewSettings;
    Appearance appearance;
    const std::unique_ptr<SystemAppearanceSource> systemAppearance;
    SearchShortcut shortcut;
    const std::unique_ptr<LoginLaunchController> login;
    WorkspaceWindow window;
    TrayCompanion tray;
    /// True while the icon is being made or removed.
    bool changesTray = false;
    SearchPanelView search;
    /// Made when it is opened for the first time.
    std::unique_ptr<SettingsView> settings;
    const std::unique_ptr<TrayHost> trayHost;
};

} // namespace tidemark
