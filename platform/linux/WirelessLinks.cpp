#include "platform/linux/WirelessLinks.h"

#include <algorithm>

namespace tidemark {

WirelessLinks::WirelessLinks(std::function<MessageBus()> bus, Places places)
    : bus(std::move(bus)), dataFolders(std::move(places.dataFolders)),
      reading([devices = std::move(places.devices)] { return kernelRoutes::links(devices); },
              [this](auto found) {
                  links = std::move(found);
                  publish();
              }) {}

bool WirelessLinks::start(Names names, Receive to) {
    stop();
    watch.emplace(RoutingWatch::Subject::links, [this] { reading.request(); });
    if (!watch->isOpen()) {
        watch.reset();
        return false;
    }
    receive = std::move(to);
    manager.emplace(bus(), names == Names::read, [this] { publish(); });
    reading.request();
    return true;
}

void WirelessLinks::stop() {
    receive = nullptr;
    reading.cancel();
    watch.reset();
    manager.reset();
    links.reset();
}

std::optional<std::string> WirelessLinks::namesAbsence() const {
    const std::string knows = "NetworkManager, which knows the names of Wi-Fi networks, ";
    const auto state = manager ? manager->state() : BusService::State::unknown;
    if (state == BusService::State::running)
        return std::nullopt;
    if (!isManagerInstalled())
        return knows + "is not installed.";
    return state == BusService::State::absent ? std::optional(knows + "does not run.")
                                              : std::nullopt;
}

bool WirelessLinks::isManagerInstalled() const {
    std::error_code error;
    // The bus lets no service have a name that no policy gives it (dbus-daemon(1)).
    const auto hasPolicy = [&](const std::filesystem::path& folder) {
        return std::filesystem::exists(
            folder / "dbus-1/system.d/org.freedesktop.NetworkManager.conf", error);
    };
    return std::ranges::any_of(dataFolders, hasPolicy) || hasPolicy("/etc");
}

void WirelessLinks::publish() {
    if (!receive || !links)
        return;
    std::vector<Link> all;
    for (const auto& link : *links)
        if (link.isWireless)
            all.push_back({.interface = {link.name, link.isRunning}});
    for (const auto& device : manager->devices()) {
        auto known = std::ranges::find(all, device.interface,
                                       [](const Link& link) { return link.interface.name; });
        if (known == all.end())
            known = all.insert(known, {.interface = {device.interface, std::nullopt}});
        if (device.isUp)
            known->interface.active = device.isUp;
        if (device.point)
            known->details = NetworkManagerValues::reading(*device.point);
    }
    receive(std::move(all));
}

} // namespace tidemark
