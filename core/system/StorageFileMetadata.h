#pragma once

#include "core/base/Date.h"

#include <algorithm>
#include <compare>
#include <cstdint>
#include <expected>
#include <optional>

#include <sys/stat.h>

namespace tidemark {

/// A time as file systems store it: `seconds` since 1970, rounded down, and the fraction.
struct FileTime {
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;

    auto operator<=>(const FileTime&) const = default;
};

/// Identifies one version of one file: equal for all its names, and different after each write.
struct FileVersion {
    dev_t device = 0;
    ino_t inode = 0;
    std::int64_t bytes = 0;
    /// The last change of the contents.
    FileTime modified;
    /// The last change of contents or status; programs can't set it.
    FileTime changed;

    auto operator<=>(const FileVersion&) const = default;
};

/// The status of one file or folder as lstat(2) returns it: that of a link, not of its target.
struct StorageFileMetadata {
    /// The error is a value of `errno`.
    using Read = std::expected<StorageFileMetadata, int>;

    /// The entry `name` of an open folder. Works at any depth, since it needs no path.
    static Read readEntry(int folder, const char* name);
    /// The file or folder that is open as `descriptor`, including `birth`.
    static Read readOpen(int descriptor);

    /// As in `st_mode`.
    mode_t mode = 0;
    /// True for a placeholder whose contents are not on this disk (`SF_DATALESS` of macOS); always
    /// false on other systems.
    bool isCloudOnly = false;
    /// Number of names (hard links) of the file.
    std::uint64_t names = 0;
    /// In the unit of `st_blocks`, 512 bytes.
    std::int64_t blocks = 0;
    /// Device and inode are the identity of a file while it exists.
    FileVersion version;
    /// When the file was created; absent where the file system does not store it, and on Linux
    /// always after readEntry(). Together with device and inode it identifies a file over time;
    /// these two alone don't, because the inode of a removed file is reused.
    std::optional<FileTime> birth;

    bool isDirectory() const { return S_ISDIR(mode); }
    bool isRegularFile() const { return S_ISREG(mode); }
    bool isSymbolicLink() const { return S_ISLNK(mode); }
    /// Logical size in bytes, never negative.
    std::int64_t bytes() const { return std::max<std::int64_t>(version.bytes, 0); }
    /// Bytes on disk, never negative.
    std::int64_t allocatedBytes() const;
    Date modified() const;
};

} // namespace tidemark
