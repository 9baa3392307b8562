#pragma once

#include <string>

/// The sockets of this process by the socket at their other end.
namespace tidemark::peerSockets {

/// The address of the socket at the other end, as bytes (unix(7)); empty if there is none.
std::string addressOf(int socket);

/// Shuts down every socket of this process that is connected to the address, whoever opened it: a
/// thread that waits for data from there reads the end of the stream.
void shutDown(const std::string& address);

} // namespace tidemark::peerSockets
