#pragma once

#include <cstdint>
#include <vector>

#include <xcb/xcb.h>

namespace tidemark {

/// Control–Shift–Space, grabbed on all root windows of one X connection. The locks of the keyboard
/// are modifiers, too, so a key is grabbed once with each combination of them. Not thread-safe.
class X11KeyGrab {
public:
    /// The connection outlives the grab.
    explicit X11KeyGrab(xcb_connection_t& used) : connection(used) {}
    ~X11KeyGrab() { release(); }
    X11KeyGrab(const X11KeyGrab&) = delete;
    X11KeyGrab& operator=(const X11KeyGrab&) = delete;

    /// Grabs the keys where the present layout has them; after a change of the layout it is to be
    /// called again. False when another program has one of them; then none is grabbed.
    bool grab();
    bool isKey(std::uint8_t keycode) const;

private:
    void release();
    std::vector<std::uint8_t> keycodesOf(std::uint32_t keysym) const;
    std::vector<std::uint16_t> lockCombinations() const;

    xcb_connection_t& connection;
    std::vector<std::uint8_t> keycodes;
};

} // namespace tidemark
