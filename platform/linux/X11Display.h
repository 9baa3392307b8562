#pragma once

#include <memory>
#include <string>

#include <xcb/xcb.h>

/// Connects to X11 servers of this machine alone. `xcb_connect` opens a connection over the network
/// for a name such as "host:0", and also for ":0" when that display has no local socket.
namespace tidemark::x11Display {

using Connection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

/// The name by which xcb reaches the display through a local socket only; empty where it has no
/// such socket.
std::string local(const std::string& display);

/// Connects to a display such as ":0", and sets `screen` to the number of its screen. Null when
/// there is no such server, when it refuses, and when it is on another machine.
Connection connect(const std::string& display, int* screen = nullptr);

} // namespace tidemark::x11Display
