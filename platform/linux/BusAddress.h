#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Parses server addresses of D-Bus (https://dbus.freedesktop.org/doc, "Server Addresses").
namespace tidemark::busAddress {

/// A local socket on which a bus listens.
struct LocalSocket {
    /// A path, or a name in the abstract namespace of Linux (unix(7)).
    std::string name;
    bool isAbstract = false;

    bool operator==(const LocalSocket&) const = default;
};

/// The address of the system bus: `DBUS_SYSTEM_BUS_ADDRESS`, else the default address.
std::string ofSystem();
/// The address of the user's session bus: `DBUS_SESSION_BUS_ADDRESS`, else the socket "bus" in
/// `XDG_RUNTIME_DIR`, which systemd makes for each user. Empty if neither variable is set.
std::string ofSession();

/// The first address in a list, if it is a local socket; absent for other transports and invalid
/// addresses.
std::optional<LocalSocket> localSocket(std::string_view addresses);

} // namespace tidemark::busAddress
