#include "core/system/StorageFileMetadata.h"

#include <cerrno>

#include <fcntl.h>

namespace tidemark {

namespace {

FileTime timeOf(const timespec& time) {
    return {time.tv_sec, time.tv_nsec};
}

StorageFileMetadata metadataOf(const struct stat& status) {
    StorageFileMetadata metadata;
    metadata.mode = status.st_mode;
    metadata.isCloudOnly = (status.st_flags & SF_DATALESS) != 0;
    metadata.names = status.st_nlink;
    metadata.blocks = status.st_blocks;
    metadata.version = {.device = status.st_dev,
                        .inode = status.st_ino,
                        .bytes = status.st_size,
                        .modified = timeOf(status.st_mtimespec),
                        .changed = timeOf(status.st_ctimespec)};
    metadata.birth = timeOf(status.st_birthtimespec);
    return metadata;
}

} // namespace

StorageFileMetadata::Read StorageFileMetadata::readEntry(int folder, const char* name) {
    struct stat status;
    if (::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return std::unexpected(errno);
    return metadataOf(status);
}

StorageFileMetadata::Read StorageFileMetadata::readOpen(int descriptor) {
    struct stat status;
    if (::fstat(descriptor, &status) != 0)
        return std::unexpected(errno);
    return metadataOf(status);
}

} // namespace tidemark
