#include "core/storage/StorageFileMetadata.h"

#include <algorithm>
#include <cerrno>
#include <limits>

#include <fcntl.h>

namespace tidemark {

namespace {

/// The unit of `st_blocks`, independent of the block size of the file system.
constexpr std::int64_t blockSize = 512;

} // namespace

std::expected<StorageFileMetadata, int> StorageFileMetadata::readEntry(int folder,
                                                                       const char* name) {
    struct stat status;
    if (::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return std::unexpected(errno);
    return StorageFileMetadata(status);
}

std::expected<StorageFileMetadata, int> StorageFileMetadata::readOpen(int descriptor) {
    struct stat status;
    if (::fstat(descriptor, &status) != 0)
        return std::unexpected(errno);
    return StorageFileMetadata(status);
}

bool StorageFileMetadata::isCloudOnly() const {
#ifdef __APPLE__
    return (status.st_flags & SF_DATALESS) != 0;
#else
    return false;
#endif
}

std::int64_t StorageFileMetadata::bytes() const {
    return std::max<std::int64_t>(status.st_size, 0);
}

std::int64_t StorageFileMetadata::allocatedBytes() const {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max() / blockSize;
    return std::clamp<std::int64_t>(status.st_blocks, 0, most) * blockSize;
}

Date StorageFileMetadata::modified() const {
#ifdef __APPLE__
    const timespec& time = status.st_mtimespec;
#else
    const timespec& time = status.st_mtim;
#endif
    return Date::fromUnix(static_cast<double>(time.tv_sec)
                          + static_cast<double>(time.tv_nsec) / 1e9);
}

} // namespace tidemark
