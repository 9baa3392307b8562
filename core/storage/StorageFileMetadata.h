#pragma once

#include "core/base/Date.h"

#include <cstdint>
#include <expected>

#include <sys/stat.h>

namespace tidemark {

/// The status of one entry of a file tree by itself (`lstat`); of a link, that of the link.
class StorageFileMetadata {
public:
    explicit StorageFileMetadata(const struct stat& entryStatus) : status(entryStatus) {}

    /// The entry `name` of an open folder; works below any depth. The error is that of `errno`.
    static std::expected<StorageFileMetadata, int> readEntry(int folder, const char* name);
    /// What is open behind a descriptor. The error is that of `errno`.
    static std::expected<StorageFileMetadata, int> readOpen(int descriptor);

    bool isDirectory() const { return S_ISDIR(status.st_mode); }
    bool isRegularFile() const { return S_ISREG(status.st_mode); }
    bool isSymbolicLink() const { return S_ISLNK(status.st_mode); }
    /// A placeholder whose contents lie elsewhere (`SF_DATALESS` of macOS). Other systems mark
    /// nothing of the kind: there it is always false.
    bool isCloudOnly() const;
    /// Device and inode are the identity of a file while it exists.
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
