#include "core/system/StorageFileMetadata.h"

#include <limits>

namespace tidemark {

namespace {

/// The unit of `st_blocks`, whatever the block size of the file system.
constexpr std::int64_t blockSize = 512;

} // namespace

std::int64_t StorageFileMetadata::allocatedBytes() const {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max() / blockSize;
    return std::clamp<std::int64_t>(blocks, 0, most) * blockSize;
}

Date StorageFileMetadata::modified() const {
    const FileTime& time = version.modified;
    return Date::fromUnix(static_cast<double>(time.seconds)
                          + static_cast<double>(time.nanoseconds) / 1e9);
}

} // namespace tidemark
