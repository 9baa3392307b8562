#include "core/system/StorageFileMetadata.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/sysmacros.h>

namespace tidemark {

namespace {

FileTime timeOf(const timespec& time) {
    return {time.tv_sec, time.tv_nsec};
}

FileTime timeOf(const statx_timestamp& time) {
    return {time.tv_sec, time.tv_nsec};
}

} // namespace

StorageFileMetadata::Read StorageFileMetadata::readEntry(int folder, const char* name) {
    Read result(StorageFileMetadata{});
    // A walk spends most of its time here, and statx(2) takes longer.
    struct stat status;
    if (::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
        result = std::unexpected(errno);
        return result;
    }
    result->mode = status.st_mode;
    result->names = status.st_nlink;
    result->blocks = status.st_blocks;
    result->version = {.device = status.st_dev,
                       .inode = status.st_ino,
                       .bytes = status.st_size,
                       .modified = timeOf(status.st_mtim),
                       .changed = timeOf(status.st_ctim)};
    return result;
}

StorageFileMetadata::Read StorageFileMetadata::readOpen(int descriptor) {
    Read result(StorageFileMetadata{});
    struct statx status;
    if (::statx(descriptor, "", AT_EMPTY_PATH, STATX_BASIC_STATS | STATX_BTIME, &status) != 0) {
        result = std::unexpected(errno);
        return result;
    }
    result->mode = status.stx_mode;
    result->names = status.stx_nlink;
    result->blocks = static_cast<std::int64_t>(status.stx_blocks);
    result->version = {.device = ::makedev(status.stx_dev_major, status.stx_dev_minor),
                       .inode = status.stx_ino,
                       .bytes = static_cast<std::int64_t>(status.stx_size),
                       .modified = timeOf(status.stx_mtime),
                       .changed = timeOf(status.stx_ctime)};
    if ((status.stx_mask & STATX_BTIME) != 0)
        result->birth = timeOf(status.stx_btime);
    return result;
}

} // namespace tidemark
