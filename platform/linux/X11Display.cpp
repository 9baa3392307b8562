#include "platform/linux/X11Display.h"

#include <cstdlib>

namespace tidemark {

std::string x11Display::local(const std::string& display) {
    if (display.starts_with(':'))
        return "unix" + display;
    const bool isLocal = display.starts_with("unix:") || display.starts_with('/');
    return isLocal ? display : std::string();
}

x11Display::Connection x11Display::connect() {
    const char* variable = std::getenv("DISPLAY");
    const std::string display = local(variable ? variable : "");
    Connection connection(nullptr, xcb_disconnect);
    if (display.empty())
        return connection;
    connection.reset(xcb_connect(display.c_str(), nullptr));
    if (xcb_connection_has_error(connection.get()) != 0)
        connection.reset();
    return connection;
}

} // namespace tidemark
