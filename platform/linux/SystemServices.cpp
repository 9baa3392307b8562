#include "app/ports/SystemServices.h"

#include "core/system/UserFolders.h"
#include "platform/linux/AutostartItem.h"
#include "platform/linux/BusAddress.h"
#include "platform/linux/DesktopNotifier.h"
#include "platform/linux/FolderFileIndex.h"
#include "platform/linux/LogindMonitor.h"
#include "platform/linux/ScreenSleepMonitor.h"
#include "platform/linux/SessionClipboard.h"
#include "platform/linux/SystemdService.h"
#include "platform/linux/UnitApplications.h"
#include "platform/linux/WindowApplications.h"
#include "platform/linux/X11Display.h"

#include <optional>

namespace tidemark {

namespace {

/// An X11 server on another machine, as in a remote login, is not connected to.
bool hasGraphicalSession() {
    const auto addresses = GraphicalSessions::Addresses::ofEnvironment();
    return !addresses.wayland.empty() || !x11Display::local(addresses.x11).empty();
}

} // namespace

std::unique_ptr<SleepAndSessionSource>
systemServices::sleepAndSession(NotificationCenter& notifications,
                                SleepAndSessionSource::Settle settle) {
    return std::make_unique<LogindMonitor>(MessageBus::system(), notifications, std::move(settle));
}

std::unique_ptr<ScreenSleepSource> systemServices::screenSleep(NotificationCenter& notifications) {
    return std::make_unique<ScreenSleepMonitor>(MessageBus::system(), MessageBus::session(),
                                                notifications);
}

std::unique_ptr<Clipboard> systemServices::clipboard() {
    return std::make_unique<SessionClipboard>();
}

std::optional<std::string> systemServices::clipboardAbsence() {
    if (hasGraphicalSession())
        return std::nullopt;
    return std::string(SessionClipboard::noSession);
}

std::unique_ptr<ApplicationSource> systemServices::applications() {
    std::vector<std::unique_ptr<ApplicationLaunches::Source>> sources;
    sources.push_back(std::make_unique<UnitApplications>(UnitApplications::Setup{}));
    for (const auto server : {WindowApplications::Server::x11, WindowApplications::Server::wayland})
        sources.push_back(
            std::make_unique<WindowApplications>(WindowApplications::Setup{.server = server}));
    return std::make_unique<ApplicationLaunches>(std::move(sources));
}

std::optional<std::string> systemServices::applicationsAbsence() {
    if (hasGraphicalSession())
        return std::nullopt;
    // The socket of the user's service manager.
    const auto runtime = UserFolders::runtime();
    std::error_code unknown;
    if (runtime && std::filesystem::exists(*runtime / "systemd/private", unknown))
        return std::nullopt;
    return "There is neither a service manager of this user nor a graphical session, so no "
           "launches of applications can be noticed.";
}

std::unique_ptr<DesktopNotifications> systemServices::desktopNotifications() {
    return std::make_unique<DesktopNotifier>(MessageBus::session());
}

std::optional<std::string> systemServices::desktopNotificationsAbsence() {
    const auto bus = busAddress::localSocket(busAddress::ofSession());
    std::error_code unknown;
    if (bus && (bus->isAbstract || std::filesystem::exists(bus->name, unknown)))
        return std::nullopt;
    return "There is no session of a desktop, so no notifications can be shown.";
}

bool systemServices::hasFileIndex() {
    return true;
}

std::unique_ptr<FileIndex> systemServices::fileIndex() {
    return std::make_unique<FolderFileIndex>(FolderFileIndex::Setup{});
}

std::unique_ptr<LoginItem> systemServices::loginItem(std::vector<std::string> command) {
    return std::make_unique<AutostartItem>(AutostartItem::Places::current(), std::move(command));
}

std::unique_ptr<RecorderService> systemServices::recorderService() {
    return std::make_unique<SystemdService>();
}

} // namespace tidemark
