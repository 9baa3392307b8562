#pragma once

#include <cstdint>
#include <vector>

#include <xcb/xcb.h>

namespace tidemark {

/// Grabs Control–Shift–Space on all root windows of one X connection. Caps Lock and Num Lock are
/// modifiers, too, so the key is grabbed once for each combination of them. Not thread-safe.
class X11KeyGrab {
public:
    /// The connection outlives the grab.
    explicit X11KeyGrab(xcb_connection_t& used) : connection(used) {}
    ~X11KeyGrab() { release(); }
    X11KeyGrab(const X11KeyGrab&) = delete;
    X11KeyGrab& operator=(const X11KeyGrab&) = delete;

    /// Grabs the key at its place in the present keyboard layout; call it again when the layout has
    /// changed. Returns false and grabs nothing when another program has grabbed the key.
    bool grab();
    /// True for a code of the grabbed key. A layout may have several space keys.
    bool isKey(std::uint8_t keycode) const;

private:
    void release();
    std::vector<std::uint8_t> keycodesOf(std::uint32_t keysym) const;
    std::vector<std::uint16_t> lockCombinations() const;

    xcb_connection_t& connection;
    std::vector<std::uint8_t> keycodes;
};

} // namespace tidemark
