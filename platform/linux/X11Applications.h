#pragma once

#include "platform/linux/DisplaySession.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/X11Windows.h"

#include <functional>
#include <map>

namespace tidemark {

/// The applications that have a normal window on an X11 server, by the list of the window manager
/// (_NET_CLIENT_LIST). Lives on the thread of the connection.
class X11Applications final : public DisplayReader, private X11Connection::Observer {
public:
    /// Sorted by identifier, each once.
    using Changed = std::function<void(std::vector<ClipApplication>)>;

    /// `changed` is called with the present applications as soon as there is a window manager, and
    /// again when they differ.
    X11Applications(X11Connection& connection, Changed changed, ApplicationFinder& applications);

private:
    void handle(const xcb_generic_event_t& event) override;
    void read();
    std::optional<ClipApplication> normalApplication(xcb_window_t window);

    const Changed changed;
    X11Windows windows;
    const xcb_atom_t list;
    /// The atom of the property that says that there is a window manager.
    const xcb_atom_t check;
    /// What each window of the list belongs to; empty for windows that don't count.
    std::map<xcb_window_t, std::optional<ClipApplication>> known;
    std::optional<std::vector<ClipApplication>> last;
};

} // namespace tidemark
