#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Server addresses of D-Bus (https://dbus.freedesktop.org/doc, "Server Addresses").
namespace tidemark::busAddress {

/// A local socket that a bus listens at.
struct LocalSocket {
    /// Bytes of a path, or of a name in the abstract namespace of Linux (unix(7)).
    std::string name;
    bool isAbstract = false;

    bool operator==(const LocalSocket&) const = default;
};

/// The address of the system's bus: `DBUS_SYSTEM_BUS_ADDRESS`, else the well-known one.
std::string ofSystem();

/// The first of a list of addresses, when it is a local socket; absent for other transports and for
/// what is no address.
std::optional<LocalSocket> localSocket(std::string_view addresses);

} // namespace tidemark::busAddress
