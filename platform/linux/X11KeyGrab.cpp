#include "platform/linux/X11KeyGrab.h"

#include "platform/linux/X11Connection.h"

#include <algorithm>

#include <xcb/xcb_keysyms.h>

namespace tidemark {

namespace {

/// X11/keysymdef.h
constexpr std::uint32_t spaceKey = 0x0020;
constexpr std::uint32_t numLockKey = 0xff7f;
constexpr std::uint16_t grabbedModifiers = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT;

std::vector<xcb_window_t> rootsOf(xcb_connection_t& connection) {
    std::vector<xcb_window_t> roots;
    for (auto screen = xcb_setup_roots_iterator(xcb_get_setup(&connection)); screen.rem > 0;
         xcb_screen_next(&screen))
        roots.push_back(screen.data->root);
    return roots;
}

} // namespace

bool X11KeyGrab::grab() {
    release();
    keycodes = keycodesOf(spaceKey);
    std::vector<xcb_void_cookie_t> requests;
    for (const auto root : rootsOf(connection))
        for (const auto keycode : keycodes)
            for (const auto locks : lockCombinations())
                requests.push_back(xcb_grab_key_checked(
                    &connection, 0, root, static_cast<std::uint16_t>(grabbedModifiers | locks),
                    keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    bool isGrabbed = !requests.empty();
    for (const auto& request : requests)
        if (const XcbPointer<xcb_generic_error_t> error(xcb_request_check(&connection, request));
            error)
            isGrabbed = false;
    if (!isGrabbed)
        release();
    return isGrabbed;
}

bool X11KeyGrab::isKey(std::uint8_t keycode) const {
    return std::ranges::find(keycodes, keycode) != keycodes.end();
}

void X11KeyGrab::release() {
    for (const auto root : rootsOf(connection))
        for (const auto keycode : keycodes)
            xcb_ungrab_key(&connection, keycode, root, XCB_MOD_MASK_ANY);
    keycodes.clear();
    xcb_flush(&connection);
}

std::vector<std::uint8_t> X11KeyGrab::keycodesOf(std::uint32_t keysym) const {
    std::vector<std::uint8_t> found;
    auto* symbols = xcb_key_symbols_alloc(&connection);
    if (!symbols)
        return found;
    const XcbPointer<xcb_keycode_t> codes(xcb_key_symbols_get_keycode(symbols, keysym));
    for (const auto* code = codes.get(); code && *code != XCB_NO_SYMBOL; ++code)
        found.push_back(*code);
    xcb_key_symbols_free(symbols);
    return found;
}

std::vector<std::uint16_t> X11KeyGrab::lockCombinations() const {
    std::uint16_t numLock = 0;
    const auto numLockCodes = keycodesOf(numLockKey);
    const XcbPointer<xcb_get_modifier_mapping_reply_t> mapping(xcb_get_modifier_mapping_reply(
        &connection, xcb_get_modifier_mapping(&connection), nullptr));
    if (mapping) {
        const auto* codes = xcb_get_modifier_mapping_keycodes(mapping.get());
        const int count = xcb_get_modifier_mapping_keycodes_length(mapping.get());
        for (int i = 0; i < count; ++i)
            if (std::ranges::find(numLockCodes, codes[i]) != numLockCodes.end())
                numLock = static_cast<std::uint16_t>(1U << (i / mapping->keycodes_per_modifier));
    }
    if (numLock == 0)
        return {0, XCB_MOD_MASK_LOCK};
    return {0, XCB_MOD_MASK_LOCK, numLock, static_cast<std::uint16_t>(numLock | XCB_MOD_MASK_LOCK)};
}

} // namespace tidemark
