#pragma once

#include <compare>
#include <ctime>

#include <sys/stat.h>
#include <sys/types.h>

namespace tidemark {

/// Identifies one version of one file, from stat(2). Equal for all names of the file until it is
/// written to.
struct FileVersion {
    struct Time {
        std::time_t seconds = 0;
        long nanoseconds = 0;

        auto operator<=>(const Time&) const = default;
    };

    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    /// When the contents were written last.
    Time modified;
    /// When contents or status were last changed. Programs can't set this time.
    Time changed;

    static FileVersion of(const struct stat& status);

    auto operator<=>(const FileVersion&) const = default;
};

} // namespace tidemark
