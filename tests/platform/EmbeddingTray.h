#pragma once

#include "platform/linux/X11Connection.h"
#include "platform/linux/X11Display.h"

#include <cstring>
#include <string>

namespace tidemark::test {

/// A panel that embeds the icons of other programs
/// (https://specifications.freedesktop.org/systemtray-spec), as far as a program sees it.
class EmbeddingTray {
public:
    explicit EmbeddingTray(const std::string& display)
        : connection(x11Display::connect(display)),
          screen(xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data),
          window(xcb_generate_id(connection.get())) {
        xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 24,
                          24, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        const xcb_atom_t selection = atom("_NET_SYSTEM_TRAY_S0");
        xcb_set_selection_owner(connection.get(), window, selection, XCB_CURRENT_TIME);
        announce(selection);
    }

    /// Whether a program has asked to embed its icon since this function was last called.
    bool wasAsked() {
        const xcb_atom_t opcode = atom("_NET_SYSTEM_TRAY_OPCODE");
        while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(connection.get())}) {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
            const bool isMessage = (event->response_type & 0x7F) == XCB_CLIENT_MESSAGE;
            if (isMessage && message.type == opcode && message.data.data32[1] == requestDock)
                return true;
        }
        return false;
    }

private:
    static constexpr std::uint32_t requestDock = 0;

    xcb_atom_t atom(const char* name) {
        const auto length = static_cast<std::uint16_t>(std::strlen(name));
        const XcbPointer<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(
            connection.get(), xcb_intern_atom(connection.get(), 0, length, name), nullptr)};
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    void announce(xcb_atom_t selection) {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = screen->root;
        message.type = atom("MANAGER");
        message.data.data32[1] = selection;
        message.data.data32[2] = window;
        xcb_send_event(connection.get(), 0, screen->root, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&message));
        xcb_flush(connection.get());
    }

    x11Display::Connection connection;
    xcb_screen_t* screen;
    xcb_window_t window;
};

} // namespace tidemark::test
