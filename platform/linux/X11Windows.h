#pragma once

#include "platform/linux/ApplicationFinder.h"
#include "platform/linux/X11Connection.h"

#include <optional>

namespace tidemark {

/// What the window manager of an X11 session publishes (Extended Window Manager Hints 1.5), and
/// which applications windows belong to. A window may be gone when it is asked about; then the
/// answer is empty. Used on the thread of the connection.
class X11Windows {
public:
    X11Windows(X11Connection& connection, ApplicationFinder& applications)
        : connection(connection), applications(applications) {}

    /// The application of the active window.
    std::optional<ClipApplication> frontmost();
    std::optional<ClipApplication> applicationOf(xcb_window_t window);
    /// The process on this machine that made a window, as the server reports it.
    std::optional<pid_t> processOf(xcb_window_t window);

    /// True when the window is one of the window manager.
    bool isWindowManagers(xcb_window_t window);
    bool hasWindowManager() { return windowManager() != XCB_WINDOW_NONE; }
    /// Empty without one.
    std::string windowManagerName();

private:
    std::optional<xcb_window_t> windowIn(xcb_window_t window, std::string_view property);
    std::vector<std::string> texts(xcb_window_t window, std::string_view property);
    xcb_window_t windowManager();

    X11Connection& connection;
    ApplicationFinder& applications;
};

} // namespace tidemark
