#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <wayland-client.h>

namespace tidemark {

/// A connection to a Wayland compositor. Everything here may wait for the compositor, so it is
/// created and used on a thread of its own. A lost connection is a state: events end, and requests
/// have no effect.
class WaylandConnection : public QObject {
public:
    /// An object that the compositor offers to all clients.
    struct Global {
        std::uint32_t name;
        std::string interface;
        std::uint32_t version;
    };

    /// Is called when globals are added and removed, for its lifetime.
    class Observer {
    public:
        explicit Observer(WaylandConnection& connection);
        virtual ~Observer();
        Observer(const Observer&) = delete;
        Observer& operator=(const Observer&) = delete;

        virtual void added(const Global& /*global*/) {}
        virtual void removed(std::uint32_t /*name*/) {}

    protected:
        WaylandConnection& connection;
    };

    /// Connects to a compositor, by the name or the path of its socket, such as "wayland-0". Null
    /// when there is none. `lost` is called from the event loop, once.
    static std::unique_ptr<WaylandConnection> open(const std::string& display,
                                                   std::function<void()> lost);
    ~WaylandConnection() override;

    wl_display* raw() const { return display; }
    const std::vector<Global>& globals() const { return all; }
    const Global* global(std::string_view interface) const;
    /// Binds a global, in the lower one of its version and `version`. The caller destroys the
    /// returned object.
    wl_proxy* bind(const Global& global, const wl_interface& interface, std::uint32_t version);
    /// Waits until the compositor has handled all requests and their events are handled here.
    void finishRequests();
    /// Sends all requests. Requests that are made while an event of this connection is handled are
    /// sent after it; after all others, call this.
    void settle();

private:
    WaylandConnection(wl_display* display, std::function<void()> lost);
    void readEvents();
    void noteLoss();
    void add(Global global);
    void remove(std::uint32_t name);

    wl_display* display;
    wl_registry* registry = nullptr;
    std::function<void()> lost;
    std::vector<Global> all;
    std::vector<Observer*> observers;
    std::optional<QSocketNotifier> readable;
};

/// Owns an object of a protocol, and makes the request that destroys it in the compositor.
class WaylandObject {
public:
    WaylandObject() = default;
    /// `destroyRequest` is the number of the request; absent where there is none.
    WaylandObject(wl_proxy* proxy, std::optional<std::uint32_t> destroyRequest)
        : proxy(proxy), destroyRequest(destroyRequest) {}
    WaylandObject(WaylandObject&& other) noexcept;
    WaylandObject& operator=(WaylandObject&& other) noexcept;
    ~WaylandObject() { reset(); }

    explicit operator bool() const { return proxy != nullptr; }
    wl_proxy* get() const { return proxy; }
    template <class T>
    T* as() const {
        return reinterpret_cast<T*>(proxy);
    }
    void reset();

private:
    wl_proxy* proxy = nullptr;
    std::optional<std::uint32_t> destroyRequest;
};

} // namespace tidemark
