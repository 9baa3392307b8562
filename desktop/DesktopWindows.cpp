#include "desktop/DesktopWindows.h"

#include "app/ports/SystemServices.h"

#include <QApplication>
#include <QScopedValueRollback>
#include <algorithm>

namespace tidemark {

namespace {

/// Starts the program when the user logs in; null where the system has no such thing.
std::unique_ptr<LoginLaunchController> loginLaunch() {
    auto item = systemServices::loginItem(
        {QCoreApplication::applicationFilePath().toStdString(), "--background"});
    return item ? std::make_unique<LoginLaunchController>(std::move(item)) : nullptr;
}

} // namespace

DesktopWindows::DesktopWindows(Recorder& used)
    : recorder(used), viewSettings(recorder.preferences()), appearance(viewSettings),
      systemAppearance(desktopServices::appearance(
          [this](const SystemAppearance& system) { appearance.setSystem(system); })),
      shortcut(desktopServices::searchShortcut), login(loginLaunch()),
      window({.model = recorder.model(),
              .memory = recorder.memoryHistory(),
              .clipboard = recorder.clipboardHistory(),
              .viewSettings = viewSettings,
              .preferences = recorder.preferences(),
              .sources = [this] { return recorder.presentSources(); },
              .tasks = recorder.tasks()}),
      tray({.model = recorder.model(),
            .memory = recorder.memoryHistory(),
            .clipboard = recorder.clipboardHistory(),
            .shortcut = shortcut}),
      search([this] { return recorder.model().history().history(); }, viewSettings),
      trayHost(desktopServices::trayHost([this](bool isThere) { setTrayHost(isThere); })) {
    // `closed` decides this: Qt would end the program even while the icon is shown.
    QApplication::setQuitOnLastWindowClosed(false);
    connect(qApp, &QGuiApplication::lastWindowClosed, this, &DesktopWindows::closed);
    connect(qApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state == Qt::ApplicationActive)
                    recorder.application().post(notification::applicationDidBecomeActive);
            });
    connect(&shortcut, &SearchShortcut::pressed, this, &DesktopWindows::showSearch);
    connect(&search, &SearchPanelView::eventChosen, this, [this](const Shared<Event>& event) {
        showWindow();
        recorder.model().history().openEvent(event);
    });
    connectWindow();
    connectTray();
    recorder.requests().showWindow = [this] { showWindow(); };
    recorder.requests().showSearch = [this] { showSearch(); };
    recorder.requests().showEvent = [this](const std::string& id) { showEvent(id); };
}

void DesktopWindows::connectWindow() {
    connect(&window, &WorkspaceWindow::settingsRequested, this, &DesktopWindows::showSettings);
    connect(&window, &WorkspaceWindow::searchPanelRequested, this, &DesktopWindows::showSearch);
}

void DesktopWindows::connectTray() {
    connect(&tray, &TrayCompanion::searchRequested, this, &DesktopWindows::showSearch);
    connect(&tray, &TrayCompanion::windowRequested, this, &DesktopWindows::showWindow);
    connect(&tray, &TrayCompanion::placeChosen, this, &DesktopWindows::showWindow);
    connect(&tray, &TrayCompanion::quitRequested, qApp, &QCoreApplication::quit);
}

void DesktopWindows::setTrayHost(bool isThere) {
    const bool wasShown = tray.isShown();
    {
        const QScopedValueRollback changing(changesTray, true);
        tray.setHost(isThere);
    }
    if (wasShown && !tray.isShown() && !window.isVisible())
        showWindow();
}

void DesktopWindows::closed() {
    // An icon in a panel that embeds icons is a window, which may be the last one.
    if (!changesTray && !tray.isShown() && !window.isVisible())
        QCoreApplication::quit();
}

void DesktopWindows::showWindow() {
    bringForward(window);
}

void DesktopWindows::showEvent(const std::string& id) {
    showWindow();
    auto& history = recorder.model().history();
    const auto& events = history.history()->full;
    const auto event =
        std::ranges::find_if(events, [&](const auto& each) { return each->id == id; });
    if (event != events.end())
        history.openEvent(*event);
}

void DesktopWindows::showSearch() {
    search.open();
}

void DesktopWindows::showSettings() {
    if (!settings)
        makeSettings();
    bringForward(*settings);
}

void DesktopWindows::makeSettings() {
    settings = std::make_unique<SettingsView>(
        SettingsView::Uses{.model = recorder.model(),
                           .memory = recorder.memoryHistory(),
                           .files = recorder.files(),
                           .clipboard = recorder.clipboardHistory(),
                           .preferences = recorder.preferences(),
                           .viewSettings = viewSettings,
                           .sources = [this] { return recorder.presentSources(); },
                           .shortcut = shortcut,
                           .login = login.get(),
                           .tasks = recorder.tasks()});
    connect(settings.get(), &SettingsView::foldersRequested, this, [this] {
        window.manageFolders();
        showWindow();
    });
    connect(settings.get(), &SettingsView::searchRequested, this, &DesktopWindows::showSearch);
    connect(settings.get(), &SettingsView::importRequested, this, [this] {
        showWindow();
        window.importHistory();
    });
}

void DesktopWindows::bringForward(QWidget& widget) {
    widget.setWindowState(widget.windowState() & ~Qt::WindowMinimized);
    widget.show();
    widget.raise();
    widget.activateWindow();
}

} // namespace tidemark
