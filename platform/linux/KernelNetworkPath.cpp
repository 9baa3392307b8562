#include "platform/linux/KernelNetworkPath.h"

namespace tidemark {

KernelNetworkPath::KernelNetworkPath(std::function<MessageBus()> bus,
                                     const std::filesystem::path& devices)
    : bus(std::move(bus)), reading([devices] { return kernelRoutes::read(devices); },
                                   [this](auto found) {
                                       routes = std::move(found);
                                       publish();
                                   }) {}

void KernelNetworkPath::start(Receive to) {
    stop();
    receive = std::move(to);
    watch.emplace(RoutingWatch::Subject::paths, [this] { reading.request(); });
    metered.emplace(bus(), [this] { publish(); });
    reading.request();
}

void KernelNetworkPath::stop() {
    receive = nullptr;
    watch.reset();
    metered.reset();
    routes.reset();
}

void KernelNetworkPath::publish() {
    if (receive && routes)
        receive(NetworkRoutes::state(*routes, metered->value()));
}

} // namespace tidemark
