#pragma once

#include "core/records/StorageMeasurementFailure.h"
#include "core/system/FolderNames.h"
#include "core/system/StorageFileMetadata.h"

#include <expected>
#include <filesystem>

namespace tidemark {

/// One open folder: its names one after the other, and the status of each by descriptor, so that
/// no path is ever too long. Links are not followed. Errors are those of `errno`.
class FolderReader {
public:
    /// Holds no folder.
    FolderReader() = default;

    /// Opens the folder `name` of the folder open as `parent`. The error is ENOTDIR or ELOOP where
    /// a link or a file has that name.
    static std::expected<FolderReader, int> open(int parent, const char* name);

    /// Opens the folder at a canonical path in order to measure it. The failure is `unreadable`
    /// when the status of the path can't be read, as where nothing is; `unavailable` when something
    /// else than a folder is there or the folder can't be opened; or `cloudBacked`.
    static std::expected<FolderReader, StorageMeasurementFailure>
    openRoot(const std::filesystem::path& path);

    explicit operator bool() const { return names.descriptor() >= 0; }
    int descriptor() const { return names.descriptor(); }

    /// The next entry, without "." and ".."; null at the end and after an error. Valid until the
    /// next call.
    const dirent* next();
    /// The error that ended the names early; 0 when there was none.
    int readError() const { return names.error(); }

    /// The status of the folder itself.
    std::expected<StorageFileMetadata, int> status() const;
    /// The status of an entry. The error is ENOENT when there is none of that name any more.
    std::expected<StorageFileMetadata, int> status(const char* name) const;

private:
    explicit FolderReader(FileDescriptor folder) : names(std::move(folder)) {}

    FolderNames names;
};

} // namespace tidemark
