#pragma once

#include "app/memory/ClipboardHistory.h"
#include "app/memory/MemoryHistoryService.h"
#include "app/model/AppModel.h"
#include "app/search/SearchShortcut.h"
#include "core/presentation/MenuContent.h"

#include <QObject>
#include <QSystemTrayIcon>
#include <QTimer>
#include <memory>

class QMenu;

namespace tidemark {

/// The icon beside the clock with its menu, which the desktop draws. Qt decides once, when an icon
/// is made, how it is shown, so an icon is only made while there is a host for it, and made anew
/// when the host was started again.
class TrayCompanion : public QObject {
    Q_OBJECT

public:
    /// What the references refer to outlives the companion.
    struct Uses {
        AppModel& model;
        MemoryHistoryService& memory;
        ClipboardHistory& clipboard;
        SearchShortcut& shortcut;
    };

    explicit TrayCompanion(const Uses& used);
    ~TrayCompanion() override;

    /// Makes the icon, if Qt can show one to the host that is there, or removes it.
    void setHost(bool isThere);
    bool isShown() const { return icon != nullptr; }

Q_SIGNALS:
    void searchRequested();
    void windowRequested();
    /// The controller shows what the user chose; the window is to be brought forward.
    void placeChosen();
    void quitRequested();

private:
    void refresh();
    void build(const std::vector<MenuEntry>& content);
    void add(const MenuEntry& entry);
    void addClip(const MenuEntry& entry);
    void choose(const MenuEntry& entry);
    void openEvent(const Shared<Event>& event);
    void openTimeline();
    void togglePin(const std::string& id);
    void changeRecording();

    const Uses uses;
    /// Combines all changes of one turn of the event loop in one refresh.
    QTimer refreshing;
    std::unique_ptr<QMenu> menu;
    /// Declared after its menu, so that it is destroyed first.
    std::unique_ptr<QSystemTrayIcon> icon;
    std::vector<MenuEntry> shown;
    std::string symbol;
};

} // namespace tidemark
