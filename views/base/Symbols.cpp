#include "views/base/Symbols.h"

#include <algorithm>
#include <array>

namespace tidemark {

namespace {

/// The icon names of a symbol: `first` is a standard name of freedesktop.org or one of Breeze,
/// `second` one of Adwaita.
struct Names {
    std::string_view symbol;
    const char* first;
    const char* second;
};

constexpr auto table = std::to_array<Names>({
    {"clock", "appointment-new", "document-open-recent-symbolic"},
    {"clock.arrow.circlepath", "backup", "document-open-recent-symbolic"},
    {"clock.badge.checkmark", "task-complete", "emblem-ok-symbolic"},
    {"app", "window", "application-x-executable-symbolic"},
    {"plus.app", "window-new", "window-new-symbolic"},
    {"plus", "list-add", "list-add-symbolic"},
    {"minus.circle", "list-remove", "list-remove-symbolic"},
    {"arrow.triangle.2.circlepath", "view-refresh", "view-refresh-symbolic"},
    {"gearshape.2", "run-build", "system-run-symbolic"},
    {"desktopcomputer", "computer", "computer-symbolic"},
    {"folder", "folder", "folder-symbolic"},
    {"trash", "user-trash", "user-trash-symbolic"},
    {"internaldrive", "drive-harddisk", "drive-harddisk-symbolic"},
    {"externaldrive", "drive-removable-media", "drive-removable-media-symbolic"},
    {"shippingbox", "package", "package-x-generic-symbolic"},
    {"doc", "document-open", "text-x-generic-symbolic"},
    {"doc.text", "view-list-text", "text-x-generic-symbolic"},
    {"doc.text.magnifyingglass", "document-preview", "edit-find-symbolic"},
    {"doc.on.doc", "edit-copy", "edit-copy-symbolic"},
    {"doc.badge.plus", "document-new", "document-new-symbolic"},
    {"arrow.down.to.line", "download", "folder-download-symbolic"},
    {"clipboard", "edit-paste", "edit-paste-symbolic"},
    {"square.stack.3d.up", "view-list-icons", "view-app-grid-symbolic"},
    {"moon.zzz", "system-suspend", "weather-clear-night-symbolic"},
    {"sun.max", "high-brightness", "display-brightness-symbolic"},
    {"power", "system-shutdown", "system-shutdown-symbolic"},
    {"display", "monitor", "video-display-symbolic"},
    {"thermometer.medium", "temperature-normal", "dialog-warning-symbolic"},
    {"network", "network-wired", "network-wired-symbolic"},
    {"wifi", "network-wireless", "network-wireless-symbolic"},
    {"wifi.slash", "network-disconnect", "network-wireless-offline-symbolic"},
    {"antenna.radiowaves.left.and.right", "network-bluetooth", "bluetooth-active-symbolic"},
    {"battery.50percent", "battery-050", "battery-level-50-symbolic"},
    {"powerplug", "battery-full-charging", "ac-adapter-symbolic"},
    {"leaf", "speedometer", "power-profile-power-saver-symbolic"},
    {"flag", "flag", "user-bookmarks-symbolic"},
    {"pencil", "document-edit", "document-edit-symbolic"},
    {"play", "media-playback-start", "media-playback-start-symbolic"},
    {"stop", "media-playback-stop", "media-playback-stop-symbolic"},
    {"pause.circle", "media-playback-pause", "media-playback-pause-symbolic"},
    {"exclamationmark.circle", "dialog-warning", "dialog-warning-symbolic"},
    {"search", "edit-find", "edit-find-symbolic"},
    {"warning", "data-warning", "dialog-warning-symbolic"},
    {"filter", "view-filter", "view-more-symbolic"},
    {"export", "document-export", "document-save-as-symbolic"},
    {"bookmark", "bookmark-new", "bookmark-new-symbolic"},
    {"trash.slash", "edit-delete", "edit-delete-symbolic"},
    {"xmark", "window-close", "window-close-symbolic"},
    {"arrow.up", "go-up", "go-up-symbolic"},
    {"table", "table", "view-list-symbolic"},
    {"chart.line", "office-chart-line", "power-profile-performance-symbolic"},
    {"settings", "configure", "preferences-system-symbolic"},
});

} // namespace

QIcon symbolIcon(std::string_view symbol) {
    const auto* names = std::ranges::find(table, symbol, &Names::symbol);
    if (names == table.end())
        return {};
    for (const char* name : {names->first, names->second})
        if (QIcon::hasThemeIcon(QString::fromLatin1(name)))
            return QIcon::fromTheme(QString::fromLatin1(name));
    return {};
}

std::vector<std::string_view> knownSymbols() {
    std::vector<std::string_view> all;
    for (const auto& names : table)
        all.push_back(names.symbol);
    return all;
}

} // namespace tidemark
