#include "demo/DemoWindows.h"

namespace tidemark::demo {

namespace {

std::unique_ptr<GlobalShortcut> noShortcut(const GlobalShortcut::Observer&) {
    return nullptr;
}

} // namespace

DemoWindows::DemoWindows(DemoRecorder& recorder)
    : uses(recorder.uses()), shortcut(noShortcut), window(uses),
      settingsView({.model = uses.model,
                    .memory = uses.memory,
                    .files = recorder.files(),
                    .clipboard = uses.clipboard,
                    .preferences = uses.preferences,
                    .viewSettings = uses.viewSettings,
                    .sources = uses.sources,
                    .shortcut = shortcut,
                    .login = nullptr,
                    .tasks = uses.tasks}),
      searchPanel([this] { return uses.model.history().history(); }, uses.viewSettings) {
    connect(&window, &WorkspaceWindow::settingsRequested, this, [this] { settingsView.show(); });
    connect(&window, &WorkspaceWindow::searchPanelRequested, this, [this] { searchPanel.open(); });
    connect(&settingsView, &SettingsView::searchRequested, this, [this] { searchPanel.open(); });
    connect(&settingsView, &SettingsView::foldersRequested, &window,
            &WorkspaceWindow::manageFolders);
    connect(&settingsView, &SettingsView::importRequested, &window,
            &WorkspaceWindow::importHistory);
    connect(&searchPanel, &SearchPanelView::eventChosen, this, [this](const Shared<Event>& event) {
        window.activateWindow();
        uses.model.history().openEvent(event);
    });
}

} // namespace tidemark::demo
