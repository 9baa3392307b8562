#include "platform/linux/FileStatus.h"

#include <algorithm>

#include <fcntl.h>
#include <sys/stat.h>

namespace tidemark {

namespace {

Date dateOf(const statx_timestamp& time) {
    return Date::fromUnix(static_cast<double>(time.tv_sec)
                          + static_cast<double>(time.tv_nsec) * 1e-9);
}

} // namespace

std::optional<FileStatus> FileStatus::read(int folder, const char* name) {
    struct statx found;
    constexpr unsigned wanted =
        STATX_TYPE | STATX_MODE | STATX_SIZE | STATX_MTIME | STATX_CTIME | STATX_BTIME;
    // Without AT_STATX_DONT_SYNC, a network file system asks its server for each file.
    if (::statx(folder, name, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC, wanted,
                &found)
        != 0)
        return std::nullopt;
    FileStatus status{.mode = found.stx_mode,
                      .isMountRoot = (found.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0,
                      .bytes = static_cast<std::int64_t>(found.stx_size),
                      .modified = dateOf(found.stx_mtime),
                      .changed = dateOf(found.stx_ctime),
                      .created = {}};
    if ((found.stx_mask & STATX_BTIME) != 0)
        status.created = dateOf(found.stx_btime);
    return status;
}

bool FileStatus::isFolder() const {
    return S_ISDIR(mode);
}

bool FileStatus::isRegularFile() const {
    return S_ISREG(mode);
}

Date FileStatus::latest() const {
    return std::max(modified, created.value_or(modified));
}

} // namespace tidemark
