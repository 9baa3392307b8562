#pragma once

#include "core/base/FileDescriptor.h"
#include "core/records/StorageMeasurementFailure.h"
#include "core/storage/StorageFileMetadata.h"

#include <expected>
#include <filesystem>
#include <memory>

#include <dirent.h>

namespace tidemark {

/// Reads one open folder: its names one by one, and the status of each relative to the open
/// descriptor, so that no path is too long. Does not follow links. Errors are `errno` values.
class FolderReader {
public:
    /// Without an open folder.
    FolderReader() = default;

    /// Opens the folder `name` in the folder open as `parent`. The error is ENOTDIR or ELOOP when a
    /// link or a file has that name.
    static std::expected<FolderReader, int> open(int parent, const char* name);

    /// Opens the folder at a canonical path for measuring. The failure is `unreadable` when the
    /// status of the path can't be read, as when it does not exist; `unavailable` when it is not a
    /// folder or can't be opened; or `cloudBacked`.
    static std::expected<FolderReader, StorageMeasurementFailure>
    openRoot(const std::filesystem::path& path);

    explicit operator bool() const { return stream || opened; }
    int descriptor() const { return number; }

    /// The next entry, without "." and ".."; null at the end and after an error. Valid until the
    /// next call.
    const dirent* next();
    /// The error that ended `next` early; 0 when there was none.
    int readError() const { return failedWith; }

    /// The status of the folder itself.
    std::expected<StorageFileMetadata, int> status() const;
    /// The status of an entry. The error is ENOENT when it does not exist any more.
    std::expected<StorageFileMetadata, int> status(const char* name) const;

private:
    struct Close {
        void operator()(DIR* opened) const { ::closedir(opened); }
    };

    explicit FolderReader(FileDescriptor folder);
    bool startReading();

    int number = -1;
    /// The descriptor until the first `next`, which opens a stream with a buffer on it.
    FileDescriptor opened;
    std::unique_ptr<DIR, Close> stream;
    int failedWith = 0;
};

} // namespace tidemark
