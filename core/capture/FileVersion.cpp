#include "core/capture/FileVersion.h"

namespace tidemark {

namespace {

FileVersion::Time timeOf(const timespec& time) {
    return {time.tv_sec, time.tv_nsec};
}

} // namespace

FileVersion FileVersion::of(const struct stat& status) {
#ifdef __APPLE__
    const timespec& modified = status.st_mtimespec;
    const timespec& changed = status.st_ctimespec;
#else
    const timespec& modified = status.st_mtim;
    const timespec& changed = status.st_ctim;
#endif
    return {status.st_dev, status.st_ino, status.st_size, timeOf(modified), timeOf(changed)};
}

} // namespace tidemark
