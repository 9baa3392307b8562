#include "app/ports/DesktopServices.h"

#include <QObject>

namespace tidemark {

void desktopServices::ignoreRemoteDisplay() {}

bool desktopServices::hasDisplay() {
    return true;
}

std::unique_ptr<GlobalShortcut> desktopServices::searchShortcut(GlobalShortcut::Observer) {
    return nullptr;
}

/// The menu bar is always there.
std::unique_ptr<TrayHost> desktopServices::trayHost(std::function<void(bool)> changed) {
    struct MenuBar : TrayHost {
        QObject receiver;
    };
    auto host = std::make_unique<MenuBar>();
    QMetaObject::invokeMethod(
        &host->receiver, [changed = std::move(changed)] { changed(true); }, Qt::QueuedConnection);
    return host;
}

/// Qt itself follows the appearance of the system.
std::unique_ptr<SystemAppearanceSource>
desktopServices::appearance(SystemAppearanceSource::Changed) {
    return nullptr;
}

std::optional<std::string> desktopServices::ownService() {
    return std::nullopt;
}

void desktopServices::startService(const char*) {}

} // namespace tidemark
