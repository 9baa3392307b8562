#include "platform/linux/X11Display.h"

namespace tidemark {

std::string x11Display::local(const std::string& display) {
    if (display.starts_with(':'))
        return "unix" + display;
    const bool isLocal = display.starts_with("unix:") || display.starts_with('/');
    return isLocal ? display : std::string();
}

x11Display::Connection x11Display::connect(const std::string& display, int* screen) {
    Connection connection(nullptr, xcb_disconnect);
    const std::string reachable = local(display);
    if (reachable.empty())
        return connection;
    connection.reset(xcb_connect(reachable.c_str(), screen));
    if (xcb_connection_has_error(connection.get()) != 0)
        connection.reset();
    return connection;
}

} // namespace tidemark
