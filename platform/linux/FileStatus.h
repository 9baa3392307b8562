#pragma once

#include "core/base/Date.h"

#include <cstdint>
#include <optional>

#include <sys/types.h>

namespace tidemark {

/// The metadata of one entry of a folder; of a link, that of the link itself (statx(2)).
struct FileStatus {
    /// As in `st_mode`.
    mode_t mode = 0;
    /// Whether something is mounted there.
    bool isMountRoot = false;
    std::int64_t bytes = 0;
    Date modified;
    /// The last change of contents or status, such as a rename.
    Date changed;
    /// Absent where the file system does not store it.
    std::optional<Date> created;

    /// `name` in the folder open as `folder`, or a path with `AT_FDCWD`. Absent when it can't be
    /// read, as when the file is gone.
    static std::optional<FileStatus> read(int folder, const char* name);

    bool isFolder() const;
    bool isRegularFile() const;
    /// The later of `modified` and `created`.
    Date latest() const;
};

} // namespace tidemark
