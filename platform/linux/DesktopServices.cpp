#include "app/ports/DesktopServices.h"

#include "core/base/FileDescriptor.h"
#include "core/system/LocalSocketAddress.h"
#include "platform/linux/DesktopShortcut.h"
#include "platform/linux/DesktopTrayHost.h"
#include "platform/linux/PortalAppearance.h"
#include "platform/linux/UserService.h"
#include "platform/linux/X11Display.h"
#include "platform/linux/X11Shortcut.h"

#include <QDir>
#include <QLibraryInfo>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>

#include <spawn.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tidemark {

namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

/// Whether the Wayland compositor accepts connections and Qt's plugin for Wayland is installed.
bool hasWayland() {
    const std::filesystem::path name = variable("WAYLAND_DISPLAY");
    if (name.empty()
        || QDir(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms"))
               .entryList({QStringLiteral("libqwayland*")})
               .isEmpty())
        return false;
    const auto address =
        LocalSocketAddress::of(std::filesystem::path(variable("XDG_RUNTIME_DIR")) / name);
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    return address && socket && ::connect(socket.get(), address->get(), address->size()) == 0;
}

} // namespace

void desktopServices::ignoreRemoteDisplay() {
    if (x11Display::local(variable("DISPLAY")).empty())
        ::unsetenv("DISPLAY");
}

bool desktopServices::hasDisplay() {
    const std::string platform = variable("QT_QPA_PLATFORM");
    const bool needsServer =
        platform.empty() || platform.starts_with("xcb") || platform.starts_with("wayland");
    return !needsServer || x11Display::connect(variable("DISPLAY")) || hasWayland();
}

std::unique_ptr<GlobalShortcut> desktopServices::searchShortcut(GlobalShortcut::Observer observer) {
    // In a Wayland session, the X11 server receives only keys that are pressed in X11 windows.
    if (!variable("WAYLAND_DISPLAY").empty())
        return std::make_unique<DesktopShortcut>(MessageBus::session(), std::move(observer));
    return std::make_unique<X11Shortcut>(std::move(observer));
}

std::unique_ptr<TrayHost> desktopServices::trayHost(std::function<void(bool)> changed) {
    return std::make_unique<DesktopTrayHost>(MessageBus::session(), std::move(changed));
}

std::unique_ptr<SystemAppearanceSource>
desktopServices::appearance(SystemAppearanceSource::Changed changed) {
    return std::make_unique<PortalAppearance>(MessageBus::session(), std::move(changed));
}

std::optional<std::string> desktopServices::ownService() {
    // Programs that a service starts are in its cgroup, too, and are not the service.
    if (variable("SYSTEMD_EXEC_PID") != std::to_string(::getpid()))
        return std::nullopt;
    std::ifstream file("/proc/self/cgroup");
    return userService::nameIn(std::string(std::istreambuf_iterator<char>(file), {}));
}

void desktopServices::startService(const char* name) {
    // Called while the process ends, when Qt can no longer start programs. The program that is
    // started gets copies of its arguments, so that these are not changed.
    const std::array<const char*, 6> arguments{"systemctl",  "--user", "start",
                                               "--no-block", name,     nullptr};
    pid_t started = 0;
    ::posix_spawnp(&started, "systemctl", nullptr, nullptr,
                   const_cast<char* const*>(arguments.data()), environ);
}

} // namespace tidemark
