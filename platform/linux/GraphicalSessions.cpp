#include "platform/linux/GraphicalSessions.h"

#include "core/system/UserFolders.h"

namespace tidemark {

GraphicalSessions::Addresses GraphicalSessions::Addresses::ofEnvironment() {
    return {.wayland = UserFolders::processEnvironment("WAYLAND_DISPLAY").value_or(""),
            .x11 = UserFolders::processEnvironment("DISPLAY").value_or("")};
}

GraphicalSessions::GraphicalSessions(const Addresses& addresses,
                                     const std::vector<std::filesystem::path>& entries)
    : waylandFinder(std::make_shared<ApplicationFinder>(DesktopEntries(entries))),
      x11Finder(std::make_shared<ApplicationFinder>(DesktopEntries(entries))) {
    if (!addresses.wayland.empty())
        waylandSession.emplace(addresses.wayland);
    if (!addresses.x11.empty())
        x11Session.emplace(addresses.x11);
}

std::shared_ptr<GraphicalSessions> GraphicalSessions::ofProcess() {
    static std::weak_ptr<GraphicalSessions> shared;
    auto sessions = shared.lock();
    if (!sessions)
        shared = sessions = std::make_shared<GraphicalSessions>(Addresses::ofEnvironment());
    return sessions;
}

} // namespace tidemark
