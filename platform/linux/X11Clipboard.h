#pragma once

#include "app/ports/Clipboard.h"
#include "platform/linux/ClipFollower.h"
#include "platform/linux/DisplaySession.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/X11Windows.h"

namespace tidemark {

/// Follows the selection CLIPBOARD of an X11 server by the notifications of XFixes. Lives on the
/// thread of the connection.
class X11Clipboard final : public DisplayReader, private X11Connection::Observer {
public:
    struct Setup {
        ClipFollower::Setup follower;
        /// Called once by the constructor, with what this server reports about copies.
        Clipboard::AccessChanged started;
        /// True for the X11 server inside of a Wayland session. There, only some compositors pass
        /// the copies of all programs on to it, and it knows only the windows of X11 programs.
        bool isInsideWayland = false;
    };

    X11Clipboard(X11Connection& connection, Setup setup, ApplicationFinder& applications);
    ~X11Clipboard() override;

private:
    ClipboardAccess follow();
    /// Has XFixes report these events of the selection, and no others.
    void selectEvents(std::uint32_t events);
    void handle(const xcb_generic_event_t& event) override;
    /// Passes the item of a new owner to the follower. `isOld`: it was copied before this object
    /// was made.
    void takeOwner(xcb_window_t owner, xcb_timestamp_t time, bool isOld);
    ClipFollower::Item itemOf(xcb_window_t owner);

    const Setup setup;
    ApplicationFinder& applications;
    X11Windows windows;
    const xcb_atom_t selection;
    ClipFollower follower;
    /// The event code of the first kind of event of XFixes; absent when copies are not followed.
    std::optional<int> firstEvent;
};

} // namespace tidemark
