#include "core/system/LocalSocketAddress.h"

#include <cerrno>

namespace tidemark {

std::expected<LocalSocketAddress, int> LocalSocketAddress::of(const std::filesystem::path& path) {
    LocalSocketAddress made;
    if (!made.set(path))
        return std::unexpected(ENAMETOOLONG);
    return made;
}

} // namespace tidemark
