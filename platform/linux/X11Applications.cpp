#include "platform/linux/X11Applications.h"

#include <algorithm>

namespace tidemark {

X11Applications::X11Applications(X11Connection& connection, Changed wanted,
                                 ApplicationFinder& applications)
    : Observer(connection), changed(std::move(wanted)), windows(connection, applications),
      list(connection.atom("_NET_CLIENT_LIST")),
      check(connection.atom("_NET_SUPPORTING_WM_CHECK")) {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection.raw(), connection.root(), XCB_CW_EVENT_MASK, &events);
    read();
}

void X11Applications::handle(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7F) != XCB_PROPERTY_NOTIFY)
        return;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window == connection.root() && (change.atom == list || change.atom == check))
        read();
}

void X11Applications::read() {
    const auto windowsNow = connection.property(connection.root(), list);
    // If no window manager runs, it is being replaced by another one: the windows stay open, so
    // what is known is kept. If one runs, a missing list means that there are no windows.
    if (windowsNow.type == XCB_ATOM_NONE && !windows.hasWindowManager())
        return;
    std::map<xcb_window_t, std::optional<ClipApplication>> now;
    for (const auto window : windowsNow.numbers()) {
        const auto before = known.find(window);
        now.emplace(window, before == known.end() ? normalApplication(window) : before->second);
    }
    known = std::move(now);
    std::map<std::string, ClipApplication> byId;
    for (const auto& [window, application] : known)
        if (application)
            byId.emplace(application->id, *application);
    std::vector<ClipApplication> running;
    for (auto& [id, application] : byId)
        running.push_back(std::move(application));
    if (last == running)
        return;
    last = running;
    changed(std::move(running));
}

std::optional<ClipApplication> X11Applications::normalApplication(xcb_window_t window) {
    const auto has = [&](std::string_view property, std::string_view value) {
        const auto atoms = connection.property(window, connection.atom(property)).numbers();
        return std::ranges::find(atoms, connection.atom(value)) != atoms.end();
    };
    const auto isSet = [&](std::string_view property) {
        return !connection.property(window, connection.atom(property)).bytes.empty();
    };
    // A window without a type is a normal one, unless it belongs to another window.
    const bool isNormal = isSet("_NET_WM_WINDOW_TYPE")
                              ? has("_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_NORMAL")
                              : !isSet("WM_TRANSIENT_FOR");
    if (!isNormal || has("_NET_WM_STATE", "_NET_WM_STATE_SKIP_TASKBAR"))
        return std::nullopt;
    return windows.applicationOf(window);
}

} // namespace tidemark
