#include "platform/linux/KernelNetworkPath.h"

namespace tidemark {

KernelNetworkPath::KernelNetworkPath(std::function<MessageBus()> bus,
                                     const std::filesystem::path& devices)
    : bus(std::move(bus)), reading([devices] { return kernelRoutes::read(devices); },
                                   [this](auto found) {
                                       routes = std::move(found);
                                       publish();
                                   }) {}

bool KernelNetworkPath::start(Receive to) {
    stop();
    watch.emplace(RoutingWatch::Subject::paths, [this] { reading.request(); });
    if (!watch->isOpen()) {
        watch.reset();
        return false;
    }
    receive = std::move(to);
    metered.emplace(bus(), [this] { publish(); });
    reading.request();
    return true;
}

void KernelNetworkPath::stop() {
    receive = nullptr;
    reading.cancel();
    watch.reset();
    metered.reset();
    routes.reset();
}

void KernelNetworkPath::publish() {
    if (receive && routes)
        receive(NetworkRoutes::state(*routes, metered->value()));
}

} // namespace tidemark
