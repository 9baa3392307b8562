#pragma once

#include "core/records/StorageMeasurementFailure.h"
#include "core/system/FolderNames.h"
#include "core/system/StorageFileMetadata.h"

#include <expected>
#include <filesystem>
#include <utility>

namespace tidemark {

/// Reads one open folder: its names one by one, and the status of each relative to the open
/// descriptor, so that no path is too long. Does not follow links. Errors are `errno` values,
/// except that of `openRoot`.
class FolderReader {
public:
    /// Without an open folder.
    FolderReader() = default;
    /// Reads a folder that was opened for reading.
    explicit FolderReader(FileDescriptor folder) : names(std::move(folder)) {}

    /// Opens the folder `name` in the folder open as `parent`. The error is ENOTDIR or ELOOP when a
    /// link or a file has that name.
    static std::expected<FolderReader, int> open(int parent, const char* name);

    /// Opens the folder at a canonical path for measuring. The failure is `unreadable` when the
    /// status of the path can't be read, as when it does not exist; `unavailable` when it is not a
    /// folder or can't be opened; or `cloudBacked`.
    static std::expected<FolderReader, StorageMeasurementFailure>
    openRoot(const std::filesystem::path& path);

    explicit operator bool() const { return names.descriptor() >= 0; }
    int descriptor() const { return names.descriptor(); }

    /// The next entry, without "." and ".."; null at the end and after an error. Valid until the
    /// next call.
    const dirent* next();
    /// The error that ended `next` early; 0 when there was none.
    int readError() const { return names.error(); }

    /// The status of the folder itself.
    std::expected<StorageFileMetadata, int> status() const;
    /// The status of an entry. The error is ENOENT when it does not exist any more.
    std::expected<StorageFileMetadata, int> status(const char* name) const;

private:
    FolderNames names;
};

} // namespace tidemark
