#pragma once

#include "core/base/Date.h"

#include <cstdint>
#include <expected>

#include <sys/stat.h>

namespace tidemark {

/// The status of one entry of a file tree (`lstat`); for a link, of the link itself.
class StorageFileMetadata {
public:
    explicit StorageFileMetadata(const struct stat& status) : status(status) {}

    /// The status of the entry `name` in an open folder; works at any depth. The error is an
    /// `errno`.
    static std::expected<StorageFileMetadata, int> readEntry(int folder, const char* name);
    /// The status of an open file or folder. The error is an `errno`.
    static std::expected<StorageFileMetadata, int> readOpen(int descriptor);

    bool isDirectory() const { return S_ISDIR(status.st_mode); }
    bool isRegularFile() const { return S_ISREG(status.st_mode); }
    bool isSymbolicLink() const { return S_ISLNK(status.st_mode); }
    /// True for a placeholder whose contents are not on this disk (`SF_DATALESS` of macOS). Always
    /// false on other systems.
    bool isCloudOnly() const;
    /// Device and inode identify a file while it exists.
    dev_t device() const { return status.st_dev; }
    ino_t inode() const { return status.st_ino; }

    /// Logical size in bytes, never negative.
    std::int64_t bytes() const;
    /// Bytes on disk, never negative.
    std::int64_t allocatedBytes() const;
    Date modified() const;

private:
    struct stat status;
};

} // namespace tidemark
