#include "views/tray/TrayCompanion.h"

#include "core/presentation/MenuText.h"
#include "views/base/EventText.h"
#include "views/base/ShownText.h"
#include "views/base/Symbols.h"

#include <QLoggingCategory>
#include <QMenu>

namespace tidemark {

namespace {

/// The image of the icon. What asks for attention has a colour, unlike all other symbols.
QIcon trayIcon(std::string_view symbol) {
    if (symbol == "exclamationmark.circle" && QIcon::hasThemeIcon(QStringLiteral("data-warning")))
        return QIcon::fromTheme(QStringLiteral("data-warning"));
    return symbolIcon(symbol);
}

/// A menu takes "&" for the mark of a shortcut.
QString plainText(QString text) {
    return text.replace(u'&', QStringLiteral("&&"));
}

QString labelOf(const MenuEntry& entry) {
    if (!entry.event)
        return plainText(shownText(entry.label));
    // Shortened after it was translated, since a pattern needs the whole title.
    const std::string title = eventText::title(*entry.event).toStdString();
    return plainText(QString::fromStdString(shortLabel(title)));
}

} // namespace

TrayCompanion::TrayCompanion(const Uses& used) : uses(used), menu(std::make_unique<QMenu>()) {
    refreshing.setSingleShot(true);
    refreshing.setInterval(0);
    connect(&refreshing, &QTimer::timeout, this, &TrayCompanion::refresh);
    for (Observable* part : std::initializer_list<Observable*>{
             &uses.model.state(), &uses.model.history(), &uses.memory, &uses.shortcut})
        connect(part, &Observable::changed, this, [this] {
            if (icon)
                refreshing.start();
        });
}

TrayCompanion::~TrayCompanion() = default;

void TrayCompanion::setHost(bool isThere) {
    icon.reset();
    // Qt has decided at the first icon which kind of host it uses.
    if (!isThere || !QSystemTrayIcon::isSystemTrayAvailable())
        return;
    icon = std::make_unique<QSystemTrayIcon>();
    symbol.clear();
    refresh();
    icon->setContextMenu(menu.get());
    connect(icon.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger)
                    Q_EMIT windowRequested();
            });
    icon->show();
}

void TrayCompanion::refresh() {
    if (!icon)
        return;
    const auto& model = uses.model;
    if (model.menuSymbol() != symbol) {
        symbol = model.menuSymbol();
        icon->setIcon(trayIcon(symbol));
    }
    icon->setToolTip(QStringLiteral("Tidemark – ") + wordsHere(model.recordingStatus()));
    const auto& history = *model.history().history();
    const auto& keys = *uses.shortcut.availability;
    auto content =
        menuContent({.status = model.recordingStatus(),
                     .isRecording = model.state().canRecord(),
                     .canChangeRecording = model.canChangeRecording(),
                     .timeline = history.timeline,
                     .history = history.events,
                     .searchKeys = keys.isAvailable ? std::optional<std::string_view>(keys.keys)
                                                    : std::nullopt});
    if (content == shown)
        return;
    shown = std::move(content);
    build(shown);
}

void TrayCompanion::build(const std::vector<MenuEntry>& content) {
    menu->clear();
    // `clear` leaves the submenus of the clips.
    qDeleteAll(menu->findChildren<QMenu*>(Qt::FindDirectChildrenOnly));
    for (const auto& entry : content)
        add(entry);
}

void TrayCompanion::add(const MenuEntry& entry) {
    if (entry.kind == MenuEntry::Kind::separator) {
        menu->addSeparator();
        return;
    }
    if (entry.kind == MenuEntry::Kind::clip)
        return addClip(entry);
    auto* action = menu->addAction(symbolIcon(entry.symbol), labelOf(entry));
    action->setEnabled(entry.isEnabled);
    connect(action, &QAction::triggered, this, [this, entry] { choose(entry); });
}

void TrayCompanion::addClip(const MenuEntry& entry) {
    auto* clip = menu->addMenu(symbolIcon(entry.symbol), labelOf(entry));
    const Shared<Event> event = entry.event.value();
    clip->addAction(wordsHere(menuText::copyClip), this,
                    [this, event] { uses.clipboard.copyAgain(*event->memory); });
    clip->addAction(wordsHere(menuText::showClip), this, [this, event] { openEvent(event); });
    clip->addAction(wordsHere(entry.isPinned ? menuText::unpinClip : menuText::pinClip), this,
                    [this, id = event->memory->id] { togglePin(id); });
}

void TrayCompanion::choose(const MenuEntry& entry) {
    using Kind = MenuEntry::Kind;
    switch (entry.kind) {
    case Kind::event:
        return openEvent(entry.event.value());
    case Kind::viewAll:
    case Kind::openTimeline:
        return openTimeline();
    case Kind::search:
        return searchRequested();
    case Kind::openProgram:
        return windowRequested();
    case Kind::changeRecording:
        return changeRecording();
    case Kind::quit:
        return quitRequested();
    case Kind::text:
    case Kind::separator:
    case Kind::clip:
        return;
    }
}

void TrayCompanion::openEvent(const Shared<Event>& event) {
    uses.model.history().openEvent(event);
    Q_EMIT placeChosen();
}

void TrayCompanion::openTimeline() {
    uses.model.history().navigate(WorkspaceDestination::timeline, true);
    Q_EMIT placeChosen();
}

void TrayCompanion::togglePin(const std::string& id) {
    try {
        uses.memory.togglePin(id);
    } catch (const std::exception& error) {
        // The window shows that the memory history can't be stored.
        qWarning("%s", error.what());
        Q_EMIT windowRequested();
    }
}

void TrayCompanion::changeRecording() {
    uses.model.setRecordingMode(uses.model.state().canRecord() ? RecordingMode::paused
                                                               : RecordingMode::recording);
}

} // namespace tidemark
