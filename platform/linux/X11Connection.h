#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <xcb/xcb.h>

namespace tidemark {

/// Frees what xcb allocates.
template <class T>
struct XcbFree {
    void operator()(T* value) const { std::free(value); }
};
template <class T>
using XcbPointer = std::unique_ptr<T, XcbFree<T>>;

/// The value of a property of a window.
struct X11Property {
    /// `XCB_ATOM_NONE` when there is no such property or no such window.
    xcb_atom_t type = XCB_ATOM_NONE;
    /// 8, 16 or 32 bits per element.
    std::uint8_t format = 0;
    std::string bytes;
    /// False when the property is longer than what was asked for.
    bool isComplete = true;

    /// The elements of a property of format 32; empty for others.
    std::vector<std::uint32_t> numbers() const;
};

/// A connection to an X11 server. Everything here waits for the server where it needs a reply, so
/// it is created and used on a thread of its own. A lost connection is a state: all calls return
/// empty values from then on.
class X11Connection : public QObject {
public:
    /// Receives all events of a connection for its lifetime. May be destroyed while one is handled.
    class Observer {
    public:
        explicit Observer(X11Connection& connection);
        virtual ~Observer();
        Observer(const Observer&) = delete;
        Observer& operator=(const Observer&) = delete;

        virtual void handle(const xcb_generic_event_t& event) = 0;

    protected:
        X11Connection& connection;
    };

    /// Connects to a display of this machine, such as ":0", by its socket in the file system. Null
    /// when there is no such server or it refuses, and for a display that is reached over a
    /// network. `lost` is called from the event loop, once.
    static std::unique_ptr<X11Connection> open(const std::string& display,
                                               std::function<void()> lost);
    ~X11Connection() override;

    /// For calls of xcb. What they request is sent after the event that is being handled, or by
    /// `settle`.
    xcb_connection_t* raw() const { return connection; }
    xcb_window_t root() const { return screen->root; }
    bool isLost() const;

    /// Handles the events that were received while a call waited for a reply, and sends all
    /// requests. For calls that are made while an event is handled this is done after the event;
    /// after all others, call this.
    void settle();
    /// Calls `work` and settles after a time, unless `context` is destroyed before.
    void after(std::chrono::milliseconds time, const QObject* context, std::function<void()> work);

    xcb_atom_t atom(std::string_view name);
    /// Empty for an unknown atom.
    std::string nameOf(xcb_atom_t atom);
    std::vector<std::string> namesOf(const std::vector<xcb_atom_t>& atoms);

    /// At most `limit` bytes of a property. With `isTaken`, removes it if all of it was read.
    X11Property property(xcb_window_t window, xcb_atom_t name, std::size_t limit = 65'536,
                         bool isTaken = false);
    /// An invisible window that receives `PropertyNotify`.
    xcb_window_t createWindow();
    /// The bits of a resource's identifier that are those of its client.
    std::uint32_t clientOf(std::uint32_t resource) const;
    /// True for a resource of this connection.
    bool isOwn(std::uint32_t resource) const;

private:
    X11Connection(xcb_connection_t* connection, int screenNumber, std::function<void()> lost);
    void handle(const xcb_generic_event_t& event);

    xcb_connection_t* connection;
    xcb_screen_t* screen = nullptr;
    std::function<void()> lost;
    std::vector<Observer*> observers;
    std::map<std::string, xcb_atom_t, std::less<>> atoms;
    std::map<xcb_atom_t, std::string> names;
    std::optional<QSocketNotifier> readable;
};

} // namespace tidemark
