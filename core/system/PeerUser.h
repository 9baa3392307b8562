#pragma once

#include <optional>

#include <sys/types.h>

namespace tidemark {

/// The user of the process at the other end of a connected local socket, as the system noted it
/// when the connection was made: `SO_PEERCRED` of unix(7), `LOCAL_PEERCRED` on a Mac.
std::optional<uid_t> peerUser(int socket);

} // namespace tidemark
