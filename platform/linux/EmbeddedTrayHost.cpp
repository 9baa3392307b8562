#include "platform/linux/EmbeddedTrayHost.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include <xcb/xfixes.h>

namespace tidemark {

namespace {

std::string numberOfScreen(const X11Connection& connection) {
    int number = 0;
    for (auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection.raw())); screen.rem > 0;
         xcb_screen_next(&screen), ++number)
        if (screen.data->root == connection.root())
            break;
    return std::to_string(number);
}

/// Reports whether the selection has an owner. Lives on the thread of the connection.
class OwnerReader final : public DisplayReader, private X11Connection::Observer {
public:
    OwnerReader(X11Connection& connection, std::function<void(bool)> changed)
        : Observer(connection), changed(std::move(changed)),
          selection(connection.atom("_NET_SYSTEM_TRAY_S" + numberOfScreen(connection))) {
        follow();
    }

private:
    void follow() {
        auto* raw = connection.raw();
        const auto* extension = xcb_get_extension_data(raw, &xcb_xfixes_id);
        if (extension == nullptr || extension->present == 0)
            return;
        // The server answers no other request of the extension before this one.
        const XcbPointer<xcb_xfixes_query_version_reply_t> version{xcb_xfixes_query_version_reply(
            raw, xcb_xfixes_query_version(raw, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
            nullptr)};
        ownerChange = extension->first_event + XCB_XFIXES_SELECTION_NOTIFY;
        xcb_xfixes_select_selection_input(
            raw, connection.root(), selection,
            XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
                | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
                | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
        const XcbPointer<xcb_get_selection_owner_reply_t> owner{
            xcb_get_selection_owner_reply(raw, xcb_get_selection_owner(raw, selection), nullptr)};
        if (owner && owner->owner != XCB_WINDOW_NONE)
            changed(true);
    }

    void handle(const xcb_generic_event_t& event) override {
        if (!ownerChange || (event.response_type & 0x7F) != *ownerChange)
            return;
        const auto& change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
        if (change.selection == selection)
            changed(change.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER
                    && change.owner != XCB_WINDOW_NONE);
    }

    const std::function<void(bool)> changed;
    const xcb_atom_t selection;
    /// Absent where the server can't report it.
    std::optional<int> ownerChange;
};

} // namespace

EmbeddedTrayHost::EmbeddedTrayHost(std::function<void(bool)> given,
                                   std::shared_ptr<GraphicalSessions> held)
    : changed(std::move(given)), sessions(std::move(held)) {
    auto* x11 = sessions->x11();
    if (!x11)
        return;
    const auto report = [this, post = calls.post()](bool isThere) {
        post([this, isThere] { changed(isThere); });
    };
    reader = x11->add({[report](X11Connection& connection) {
                           return std::make_unique<OwnerReader>(connection, report);
                       },
                       [report] { report(false); }});
}

} // namespace tidemark
