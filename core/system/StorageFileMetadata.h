#pragma once

#include "core/base/Date.h"

#include <algorithm>
#include <compare>
#include <cstdint>
#include <expected>
#include <optional>

#include <sys/stat.h>

namespace tidemark {

/// A moment as file systems keep it: `seconds` since 1970, rounded down, and the rest.
struct FileTime {
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;

    auto operator<=>(const FileTime&) const = default;
};

/// One version of one file: the same for all its names, until somebody writes to it.
struct FileVersion {
    dev_t device = 0;
    ino_t inode = 0;
    std::int64_t bytes = 0;
    /// When the contents were written last.
    FileTime modified;
    /// When contents or status changed last; nobody can set it back.
    FileTime changed;

    auto operator<=>(const FileVersion&) const = default;
};

/// The status of one file or folder by itself (`lstat`): of a link, that of the link.
struct StorageFileMetadata {
    /// The error is that of `errno`.
    using Read = std::expected<StorageFileMetadata, int>;

    /// The entry `name` of an open folder; works below any depth.
    static Read readEntry(int folder, const char* name);
    /// What is open behind a descriptor, with its birth.
    static Read readOpen(int descriptor);

    /// As in `st_mode`.
    mode_t mode = 0;
    /// A placeholder whose contents lie elsewhere (`SF_DATALESS` of macOS). Other systems mark
    /// nothing of the kind: there it is always false.
    bool isCloudOnly = false;
    /// How many names the file has.
    std::uint64_t names = 0;
    /// In the unit of `st_blocks`, 512 bytes.
    std::int64_t blocks = 0;
    /// Device and inode are the identity of a file while it exists.
    FileVersion version;
    /// When the file was made; absent where the file system keeps no such date. With device and
    /// inode it is the identity of a file over time: the inode of a removed file is given to
    /// another one soon.
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
