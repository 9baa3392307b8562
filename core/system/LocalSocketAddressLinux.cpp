#include "core/system/LocalSocketAddress.h"

#include <cerrno>
#include <string>

#include <fcntl.h>

namespace tidemark {

std::expected<LocalSocketAddress, int> LocalSocketAddress::of(const std::filesystem::path& path) {
    LocalSocketAddress made;
    if (made.set(path))
        return made;
    made.folder =
        FileDescriptor(::open(path.parent_path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!made.folder)
        return std::unexpected(errno);
    const std::filesystem::path opened("/proc/self/fd/" + std::to_string(made.folder.get()));
    if (!made.set(opened / path.filename()))
        return std::unexpected(ENAMETOOLONG);
    return made;
}

} // namespace tidemark
