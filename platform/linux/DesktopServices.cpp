#include "app/ports/DesktopServices.h"

#include "app/base/Background.h"
#include "app/base/TaskScope.h"
#include "core/base/Error.h"
#include "core/base/FileDescriptor.h"
#include "core/system/LocalSocketAddress.h"
#include "platform/linux/PortalAppearance.h"
#include "platform/linux/PortalShortcut.h"
#include "platform/linux/StatusNotifierHost.h"
#include "platform/linux/UserService.h"
#include "platform/linux/X11Shortcut.h"

#include <QDBusConnection>
#include <QDir>
#include <QLibraryInfo>
#include <QLoggingCategory>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>

#include <spawn.h>
#include <sys/socket.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace tidemark {

namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

bool hasX11() {
    if (variable("DISPLAY").empty())
        return false;
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(nullptr, nullptr), xcb_disconnect);
    return xcb_connection_has_error(connection.get()) == 0;
}

/// Whether the compositor listens, and Qt has what it takes to speak with it.
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

/// Creates what follows a service of the session's bus when the process is connected to it, which
/// is done in the background because a bus may hang.
template <class Port, class Follower>
class OnSessionBus final : public Port {
public:
    using Make = std::function<std::unique_ptr<Follower>(const QDBusConnection&)>;

    explicit OnSessionBus(Make make) : make(std::move(make)) { tasks.start(connect()); }

private:
    QCoro::Task<void> connect() {
        const auto hold = tasks.hold();
        const auto open = [](const std::stop_token&) { return QDBusConnection::sessionBus(); };
        std::optional<QDBusConnection> bus;
        try {
            bus = co_await runInBackground(open);
        } catch (const Error& error) {
            qWarning("The session's bus can't be followed. %s", error.what());
        }
        if (bus && bus->isConnected() && !tasks.isStopping())
            follower = make(*bus);
    }

    const Make make;
    std::unique_ptr<Follower> follower;
    TaskScope tasks;
};

} // namespace

bool desktopServices::hasDisplay() {
    const std::string platform = variable("QT_QPA_PLATFORM");
    const bool needsServer =
        platform.empty() || platform.starts_with("xcb") || platform.starts_with("wayland");
    return !needsServer || hasX11() || hasWayland();
}

std::unique_ptr<GlobalShortcut> desktopServices::searchShortcut(GlobalShortcut::Observer observer) {
    // There an X server only has the keys that are pressed in windows of X11.
    if (!variable("WAYLAND_DISPLAY").empty())
        return std::make_unique<OnSessionBus<GlobalShortcut, PortalShortcut>>(
            [observer = std::move(observer)](const QDBusConnection& bus) {
                return std::make_unique<PortalShortcut>(bus, observer);
            });
    return std::make_unique<X11Shortcut>(std::move(observer));
}

std::unique_ptr<TrayHost> desktopServices::trayHost(std::function<void(bool)> changed) {
    return std::make_unique<OnSessionBus<TrayHost, StatusNotifierHost>>(
        [changed = std::move(changed)](const QDBusConnection& bus) {
            return std::make_unique<StatusNotifierHost>(bus, changed);
        });
}

std::unique_ptr<SystemAppearanceSource>
desktopServices::appearance(SystemAppearanceSource::Changed changed) {
    return std::make_unique<OnSessionBus<SystemAppearanceSource, PortalAppearance>>(
        [changed = std::move(changed)](const QDBusConnection& bus) {
            return std::make_unique<PortalAppearance>(bus, changed);
        });
}

std::optional<std::string> desktopServices::ownService() {
    // Programs that a service starts are in its cgroup, too, and are not the service.
    if (variable("SYSTEMD_EXEC_PID") != std::to_string(::getpid()))
        return std::nullopt;
    std::ifstream file("/proc/self/cgroup");
    return userService::nameIn(std::string(std::istreambuf_iterator<char>(file), {}));
}

void desktopServices::startService(const std::string& name) {
    // Called while the process ends, so without what Qt needs for that.
    std::string unit = name;
    std::array<std::string, 4> words{"systemctl", "--user", "start", "--no-block"};
    std::array<char*, 6> arguments{words[0].data(), words[1].data(), words[2].data(),
                                   words[3].data(), unit.data(),     nullptr};
    pid_t started = 0;
    ::posix_spawnp(&started, "systemctl", nullptr, nullptr, arguments.data(), environ);
}

} // namespace tidemark
