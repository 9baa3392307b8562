#pragma once

#include "core/base/Date.h"
#include "core/records/StorageMeasurementFailure.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>

#include <sys/stat.h>

namespace tidemark {

/// The status of one entry of a file tree by itself (`lstat`); of a link, that of the link.
class StorageFileMetadata {
public:
    explicit StorageFileMetadata(const struct stat& entryStatus) : status(entryStatus) {}

    static std::expected<StorageFileMetadata, StorageMeasurementFailure>
    read(const std::filesystem::path& path);
    /// The entry `name` of an open folder; works below any depth. Absent when it can't be read.
    static std::optional<StorageFileMetadata> readEntry(int folder, const char* name);
    /// What is open behind a descriptor.
    static std::optional<StorageFileMetadata> readOpen(int descriptor);

    bool isDirectory() const { return S_ISDIR(status.st_mode); }
    bool isRegularFile() const { return S_ISREG(status.st_mode); }
    bool isSymbolicLink() const { return S_ISLNK(status.st_mode); }
    /// A placeholder whose contents lie elsewhere (`SF_DATALESS` of macOS). Other systems mark
    /// nothing of the kind: there it is always false.
    bool isCloudOnly() const;
    /// True once the last name is gone and the entry only lives on through who has it open.
    bool isUnlinked() const { return status.st_nlink == 0; }
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
