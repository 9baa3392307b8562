#include "platform/linux/WaylandConnection.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <sys/socket.h>
#include <time.h>

namespace tidemark {

WaylandConnection::Observer::Observer(WaylandConnection& connection) : connection(connection) {
    connection.observers.push_back(this);
}

WaylandConnection::Observer::~Observer() {
    std::erase(connection.observers, this);
}

std::unique_ptr<WaylandConnection> WaylandConnection::open(const std::string& name,
                                                           std::function<void()> lost) {
    auto* display = wl_display_connect(name.c_str());
    if (display == nullptr)
        return nullptr;
    return std::unique_ptr<WaylandConnection>(new WaylandConnection(display, std::move(lost)));
}

WaylandConnection::WaylandConnection(wl_display* display, std::function<void()> lost)
    : display(display), registry(wl_display_get_registry(display)), lost(std::move(lost)) {
    static constexpr wl_registry_listener listener{
        .global =
            [](void* self, wl_registry*, std::uint32_t name, const char* interface,
               std::uint32_t version) {
                static_cast<WaylandConnection*>(self)->add({name, interface, version});
            },
        .global_remove =
            [](void* self, wl_registry*, std::uint32_t name) {
                static_cast<WaylandConnection*>(self)->remove(name);
            },
    };
    wl_registry_add_listener(registry, &listener, this);
    readable.emplace(wl_display_get_fd(display), QSocketNotifier::Read);
    connect(&*readable, &QSocketNotifier::activated, this, [this] { readEvents(); });
    finishRequests();
}

WaylandConnection::~WaylandConnection() {
    readable.reset();
    wl_registry_destroy(registry);
    wl_display_disconnect(display);
}

void WaylandConnection::add(Global global) {
    all.push_back(std::move(global));
    for (Observer* observer : std::vector(observers))
        observer->added(all.back());
}

void WaylandConnection::remove(std::uint32_t name) {
    std::erase_if(all, [&](const Global& global) { return global.name == name; });
    for (Observer* observer : std::vector(observers))
        observer->removed(name);
}

const WaylandConnection::Global* WaylandConnection::global(std::string_view interface) const {
    const auto found = std::ranges::find(all, interface, &Global::interface);
    return found == all.end() ? nullptr : &*found;
}

wl_proxy* WaylandConnection::bind(const Global& global, const wl_interface& interface,
                                  std::uint32_t version) {
    // Sends `global.interface` and not `interface.name`, because protocols with the same requests
    // and events share one `wl_interface`.
    const auto bound = std::min(version, global.version);
    return wl_proxy_marshal_flags(reinterpret_cast<wl_proxy*>(registry), WL_REGISTRY_BIND,
                                  &interface, bound, 0, global.name, global.interface.c_str(),
                                  bound, nullptr);
}

void WaylandConnection::finishRequests() {
    wl_display_roundtrip(display);
    noteLoss();
}

void WaylandConnection::settle() {
    // If the socket is full, only a part is sent. The compositor reads that part, and the rest is
    // sent after its next event.
    wl_display_flush(display);
    noteLoss();
}

void WaylandConnection::readEvents() {
    while (wl_display_prepare_read(display) != 0)
        if (wl_display_dispatch_pending(display) < 0)
            return noteLoss();
    wl_display_flush(display);
    if (wl_display_read_events(display) >= 0)
        wl_display_dispatch_pending(display);
    settle();
}

void WaylandConnection::noteLoss() {
    if (wl_display_get_error(display) == 0 || !lost)
        return;
    readable->setEnabled(false);
    // Later, because the receiver destroys this object.
    QMetaObject::invokeMethod(this, std::exchange(lost, {}), Qt::QueuedConnection);
}

WaylandObject::WaylandObject(WaylandObject&& other) noexcept
    : proxy(std::exchange(other.proxy, nullptr)), destroyRequest(other.destroyRequest) {}

WaylandObject& WaylandObject::operator=(WaylandObject&& other) noexcept {
    if (this == &other)
        return *this;
    reset();
    proxy = std::exchange(other.proxy, nullptr);
    destroyRequest = other.destroyRequest;
    return *this;
}

void WaylandObject::reset() {
    auto* old = std::exchange(proxy, nullptr);
    if (old == nullptr)
        return;
    if (destroyRequest)
        wl_proxy_marshal_flags(old, *destroyRequest, nullptr, wl_proxy_get_version(old),
                               WL_MARSHAL_FLAG_DESTROY);
    else
        wl_proxy_destroy(old);
}

} // namespace tidemark
