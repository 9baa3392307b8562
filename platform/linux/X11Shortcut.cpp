#include "platform/linux/X11Shortcut.h"

#include "platform/linux/X11KeyGrab.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <utility>

namespace tidemark {

namespace {

using Availability = GlobalShortcut::Availability;

/// The bit of an event that another program has sent.
constexpr std::uint8_t sentByProgram = 0x80;

/// Distinguishes a key that is pressed from one that repeats because it is held down: a repetition
/// is a release and a press of the same time.
class Presses {
public:
    void release(const xcb_key_release_event_t& event) { released = event.time; }
    bool isNew(const xcb_key_press_event_t& event) const { return released != event.time; }

private:
    std::optional<xcb_timestamp_t> released;
};

/// Grabs the keys and reports when they are pressed. Lives on the thread of the connection.
class KeyReader final : public DisplayReader, private X11Connection::Observer {
public:
    KeyReader(X11Connection& connection, std::function<void()> pressed,
              std::function<void(const Availability&)> availabilityChanged)
        : Observer(connection), pressed(std::move(pressed)),
          availabilityChanged(std::move(availabilityChanged)), keys(*connection.raw()) {
        grab();
    }

private:
    void handle(const xcb_generic_event_t& event) override {
        switch (event.response_type & ~sentByProgram) {
        case XCB_KEY_PRESS: {
            const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
            if (keys.isKey(key.detail) && presses.isNew(key))
                pressed();
            break;
        }
        case XCB_KEY_RELEASE:
            presses.release(reinterpret_cast<const xcb_key_release_event_t&>(event));
            break;
        case XCB_MAPPING_NOTIFY:
            grab();
            break;
        default:
            break;
        }
    }

    void grab() {
        availabilityChanged(keys.grab() ? Availability{.isAvailable = true}
                                        : Availability{.obstacle = "Another program has these "
                                                                   "keys."});
    }

    const std::function<void()> pressed;
    const std::function<void(const Availability&)> availabilityChanged;
    X11KeyGrab keys;
    Presses presses;
};

} // namespace

X11Shortcut::X11Shortcut(Observer given, std::shared_ptr<GraphicalSessions> held)
    : observer(std::move(given)), sessions(std::move(held)) {
    auto* x11 = sessions->x11();
    if (!x11)
        return;
    const auto press = [this, post = calls.post()] { post([this] { observer.pressed(); }); };
    const auto report = [this, post = calls.post()](const Availability& now) {
        post([this, now] { observer.availabilityChanged(now); });
    };
    reader = x11->add({[press, report](X11Connection& connection) {
                           return std::make_unique<KeyReader>(connection, press, report);
                       },
                       [report] { report({}); }});
}

} // namespace tidemark
