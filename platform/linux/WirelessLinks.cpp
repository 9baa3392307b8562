#include "platform/linux/WirelessLinks.h"

#include <algorithm>

namespace tidemark {

WirelessLinks::WirelessLinks(std::function<MessageBus()> bus, const std::filesystem::path& devices)
    : bus(std::move(bus)), reading([devices] { return kernelRoutes::links(devices); },
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
    watch.reset();
    manager.reset();
    links.reset();
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
