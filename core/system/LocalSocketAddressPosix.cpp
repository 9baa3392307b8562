#include "core/system/LocalSocketAddress.h"

namespace tidemark {

bool LocalSocketAddress::set(const std::filesystem::path& path) {
    if (path.native().size() >= sizeof address.sun_path)
        return false;
    address.sun_family = AF_UNIX;
    path.native().copy(address.sun_path, sizeof address.sun_path - 1);
    return true;
}

} // namespace tidemark
