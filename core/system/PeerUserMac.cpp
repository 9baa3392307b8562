#include "core/system/PeerUser.h"

#include <unistd.h>

namespace tidemark {

std::optional<uid_t> peerUser(int socket) {
    uid_t user = 0;
    gid_t group = 0;
    if (::getpeereid(socket, &user, &group) != 0)
        return std::nullopt;
    return user;
}

} // namespace tidemark
