#include "platform/linux/X11Windows.h"

#include "core/base/Text.h"

#include <algorithm>
#include <ranges>

#include <xcb/res.h>

namespace tidemark {

std::optional<xcb_window_t> X11Windows::windowIn(xcb_window_t window, std::string_view property) {
    const auto numbers = connection.property(window, connection.atom(property)).numbers();
    if (numbers.empty() || numbers.front() == XCB_WINDOW_NONE)
        return std::nullopt;
    return numbers.front();
}

std::vector<std::string> X11Windows::texts(xcb_window_t window, std::string_view property) {
    const auto value = connection.property(window, connection.atom(property));
    std::vector<std::string> texts;
    if (value.format != 8)
        return texts;
    for (const auto part : value.bytes | std::views::split('\0'))
        if (!part.empty())
            texts.push_back(textFromBytes(std::string_view(part.begin(), part.end())));
    return texts;
}

std::optional<ClipApplication> X11Windows::frontmost() {
    const auto active = windowIn(connection.root(), "_NET_ACTIVE_WINDOW");
    return active ? applicationOf(*active) : std::nullopt;
}

std::optional<ClipApplication> X11Windows::applicationOf(xcb_window_t window) {
    std::vector<std::string> ids;
    for (const auto* name : {"_GTK_APPLICATION_ID", "_KDE_NET_WM_DESKTOP_FILE"})
        for (auto& id : texts(window, name))
            ids.push_back(std::move(id));
    auto classes = texts(window, "WM_CLASS");
    // The name of the instance comes first, then the class, which is the better one and so is tried
    // first.
    std::ranges::reverse(classes);
    return applications.ofWindow(ids, classes, processOf(window));
}

std::optional<pid_t> X11Windows::processOf(xcb_window_t window) {
    const auto* extension = xcb_get_extension_data(connection.raw(), &xcb_res_id);
    if (extension == nullptr || extension->present == 0)
        return std::nullopt;
    const xcb_res_client_id_spec_t wanted{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const XcbPointer<xcb_res_query_client_ids_reply_t> reply{xcb_res_query_client_ids_reply(
        connection.raw(), xcb_res_query_client_ids(connection.raw(), 1, &wanted), nullptr)};
    if (!reply)
        return std::nullopt;
    auto values = xcb_res_query_client_ids_ids_iterator(reply.get());
    for (; values.rem > 0; xcb_res_client_id_value_next(&values))
        if (xcb_res_client_id_value_value_length(values.data) > 0)
            return static_cast<pid_t>(*xcb_res_client_id_value_value(values.data));
    return std::nullopt;
}

xcb_window_t X11Windows::windowManager() {
    constexpr std::string_view check = "_NET_SUPPORTING_WM_CHECK";
    const auto window = windowIn(connection.root(), check);
    // The property may outlive its window manager, and then name a window that another program has
    // made since. Only the window of a window manager names itself.
    const bool isOwn = window && windowIn(*window, check) == window;
    return isOwn ? *window : xcb_window_t{XCB_WINDOW_NONE};
}

bool X11Windows::isWindowManagers(xcb_window_t window) {
    const auto manager = windowManager();
    return manager != XCB_WINDOW_NONE
           && connection.clientOf(window) == connection.clientOf(manager);
}

std::string X11Windows::windowManagerName() {
    const auto manager = windowManager();
    const auto names =
        manager == XCB_WINDOW_NONE ? std::vector<std::string>() : texts(manager, "_NET_WM_NAME");
    return names.empty() ? std::string() : names.front();
}

} // namespace tidemark
