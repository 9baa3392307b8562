#include "platform/linux/PeerSockets.h"

#include <charconv>
#include <filesystem>
#include <system_error>

#include <sys/socket.h>
#include <sys/un.h>

namespace tidemark {

namespace fs = std::filesystem;

std::string peerSockets::addressOf(int socket) {
    sockaddr_un address{};
    socklen_t size = sizeof address;
    if (::getpeername(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0
        || address.sun_family != AF_UNIX || size <= sizeof address.sun_family
        || size > sizeof address)
        return {};
    return {reinterpret_cast<const char*>(&address), size};
}

void peerSockets::shutDown(const std::string& address) {
    if (address.empty())
        return;
    std::error_code error;
    for (fs::directory_iterator open("/proc/self/fd", error), end; !error && open != end;
         open.increment(error)) {
        const std::string number = open->path().filename().native();
        int descriptor = -1;
        std::from_chars(number.data(), number.data() + number.size(), descriptor);
        if (addressOf(descriptor) == address)
            ::shutdown(descriptor, SHUT_RDWR);
    }
}

} // namespace tidemark
