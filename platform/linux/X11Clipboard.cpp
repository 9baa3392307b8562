#include "platform/linux/X11Clipboard.h"

#include "platform/linux/X11OfferedItem.h"

#include <xcb/xfixes.h>

namespace tidemark {

namespace {

/// True for the compositor that passes the copies of all programs on to the X11 server. Others do
/// so only while an X11 program has the keyboard focus.
bool showsAllCopies(std::string_view windowManager) {
    return windowManager == "GNOME Shell" || windowManager == "Mutter";
}

} // namespace

X11Clipboard::X11Clipboard(X11Connection& connection, Setup wanted, ApplicationFinder& applications)
    : Observer(connection), setup(std::move(wanted)), applications(applications),
      windows(connection, applications), selection(connection.atom("CLIPBOARD")),
      follower(setup.follower) {
    setup.started(follow());
}

X11Clipboard::~X11Clipboard() {
    if (firstEvent)
        selectEvents(0);
}

void X11Clipboard::selectEvents(std::uint32_t events) {
    xcb_xfixes_select_selection_input(connection.raw(), connection.root(), selection, events);
}

ClipboardAccess X11Clipboard::follow() {
    if (setup.isInsideWayland && !showsAllCopies(windows.windowManagerName()))
        return {.absence = "This desktop does not let other programs watch the clipboard."};
    auto* raw = connection.raw();
    const auto* extension = xcb_get_extension_data(raw, &xcb_xfixes_id);
    if (extension == nullptr || extension->present == 0)
        return {.absence = "This display server does not report what is copied."};
    // The server answers no other request of the extension before this one.
    const XcbPointer<xcb_xfixes_query_version_reply_t> version{xcb_xfixes_query_version_reply(
        raw, xcb_xfixes_query_version(raw, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
        nullptr)};
    firstEvent = extension->first_event;
    selectEvents(XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
                 | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
                 | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const XcbPointer<xcb_get_selection_owner_reply_t> owner{
        xcb_get_selection_owner_reply(raw, xcb_get_selection_owner(raw, selection), nullptr)};
    if (owner)
        takeOwner(owner->owner, XCB_CURRENT_TIME, true);
    return {.hasWriter = !setup.isInsideWayland, .hasFrontmost = !setup.isInsideWayland};
}

void X11Clipboard::handle(const xcb_generic_event_t& event) {
    const auto kind = event.response_type & 0x7F;
    if (!firstEvent || kind != *firstEvent + XCB_XFIXES_SELECTION_NOTIFY)
        return;
    const auto& change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if (change.selection != selection)
        return;
    const bool hasOwner = change.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER;
    takeOwner(hasOwner ? change.owner : xcb_window_t{XCB_WINDOW_NONE}, change.selection_timestamp,
              false);
}

void X11Clipboard::takeOwner(xcb_window_t owner, xcb_timestamp_t time, bool isOld) {
    if (owner == XCB_WINDOW_NONE)
        return follower.withdraw();
    if (connection.isOwn(owner))
        return follower.drop();
    auto item = itemOf(owner);
    item.content = std::make_unique<X11OfferedItem>(connection, selection, time);
    item.isOld = isOld;
    follower.replace(std::move(item));
}

ClipFollower::Item X11Clipboard::itemOf(xcb_window_t owner) {
    ClipFollower::Item item;
    const bool isKeeper = windows.isWindowManagers(owner);
    const auto process = isKeeper ? std::nullopt : windows.processOf(owner);
    if (process)
        item.origin.writer = applications.ofProcess(*process);
    if (!setup.isInsideWayland)
        item.origin.frontmost = windows.frontmost();
    item.mayBeKeeper = isKeeper || !item.origin.writer;
    return item;
}

} // namespace tidemark
