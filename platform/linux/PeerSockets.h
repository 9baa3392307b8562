#pragma once

#include <string>

/// Finds the Unix sockets of this process that are connected to a given address.
namespace tidemark::peerSockets {

/// The address of the Unix socket that `socket` is connected to: the bytes of its `sockaddr_un`
/// (unix(7)). Empty if `socket` is not connected to one.
std::string addressOf(int socket);

/// Shuts down every socket of this process that is connected to the address, also those that
/// libraries opened. A thread that waits for data on one of them then reads the end of the stream.
void shutDown(const std::string& address);

} // namespace tidemark::peerSockets
