#include "platform/linux/X11Shortcut.h"

#include "core/base/Error.h"
#include "core/base/StartThread.h"
#include "platform/linux/X11Display.h"
#include "platform/linux/X11KeyGrab.h"

#include <QLoggingCategory>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>

#include <poll.h>
#include <sys/eventfd.h>

namespace tidemark {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
using AnyEvent = std::unique_ptr<xcb_generic_event_t, Free>;

/// The bit of an event that another program has sent.
constexpr std::uint8_t sentByProgram = 0x80;

/// Tells a key that is pressed from one that repeats because it is held down: a repetition is a
/// release and a press of the same time.
class Presses {
public:
    void release(const xcb_key_release_event_t& event) { released = event.time; }
    bool isNew(const xcb_key_press_event_t& event) const { return released != event.time; }

private:
    std::optional<xcb_timestamp_t> released;
};

/// False when the thread is to end or the connection is lost.
bool waitForEvent(xcb_connection_t& connection, int ending) {
    std::array<pollfd, 2> sources{
        {{xcb_get_file_descriptor(&connection), POLLIN, 0}, {ending, POLLIN, 0}}};
    while (::poll(sources.data(), sources.size(), -1) < 0)
        if (errno != EINTR)
            return false;
    return sources[1].revents == 0 && xcb_connection_has_error(&connection) == 0;
}

GlobalShortcut::Availability grab(X11KeyGrab& keys) {
    if (keys.grab())
        return {.isAvailable = true};
    return {.obstacle = "Another program has these keys."};
}

} // namespace

X11Shortcut::X11Shortcut(Observer observer)
    : observer(std::move(observer)), ending(::eventfd(0, EFD_CLOEXEC)) {
    if (!ending)
        return;
    try {
        thread = startThread([this] { follow(); });
    } catch (const Error& error) {
        qWarning("The keys of the search panel can't be followed. %s", error.what());
    }
}

X11Shortcut::~X11Shortcut() {
    if (!thread.joinable())
        return;
    ::eventfd_write(ending.get(), 1);
    thread.join();
}

void X11Shortcut::follow() {
    const auto connection = x11Display::connect();
    if (!connection)
        return;
    X11KeyGrab keys(*connection);
    Presses presses;
    report(grab(keys));
    do {
        // Replies to requests may have brought events along, so these come before the wait.
        while (const AnyEvent event{xcb_poll_for_event(connection.get())}) {
            switch (event->response_type & ~sentByProgram) {
            case XCB_KEY_PRESS: {
                const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(*event);
                if (keys.isKey(key.detail) && presses.isNew(key))
                    press();
                break;
            }
            case XCB_KEY_RELEASE:
                presses.release(reinterpret_cast<const xcb_key_release_event_t&>(*event));
                break;
            case XCB_MAPPING_NOTIFY:
                report(grab(keys));
                break;
            default:
                break;
            }
        }
    } while (waitForEvent(*connection, ending.get()));
    if (xcb_connection_has_error(connection.get()) != 0)
        report({});
}

void X11Shortcut::report(Availability availability) {
    QMetaObject::invokeMethod(
        &receiver,
        [this, availability = std::move(availability)] {
            observer.availabilityChanged(availability);
        },
        Qt::QueuedConnection);
}

void X11Shortcut::press() {
    QMetaObject::invokeMethod(&receiver, [this] { observer.pressed(); }, Qt::QueuedConnection);
}

} // namespace tidemark
