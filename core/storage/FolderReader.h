#pragma once

#include "core/base/FileDescriptor.h"
#include "core/records/StorageMeasurementFailure.h"
#include "core/storage/StorageFileMetadata.h"

#include <expected>
#include <filesystem>
#include <memory>

#include <dirent.h>

namespace tidemark {

/// One open folder: its names one after the other, and the status of each by descriptor, so that
/// no path is ever too long. Links are not followed. Errors are those of `errno`.
class FolderReader {
public:
    /// Holds no folder.
    FolderReader() = default;
    /// Reads a folder that was opened for reading.
    explicit FolderReader(FileDescriptor folder);

    /// Opens the folder `name` of the folder open as `parent`. The error is ENOTDIR or ELOOP where
    /// a link or a file has that name.
    static std::expected<FolderReader, int> open(int parent, const char* name);

    /// Opens the folder at a canonical path in order to measure it. The failure is `unreadable`
    /// when the status of the path can't be read, as where nothing is; `unavailable` when something
    /// else than a folder is there or the folder can't be opened; or `cloudBacked`.
    static std::expected<FolderReader, StorageMeasurementFailure>
    openRoot(const std::filesystem::path& path);

    explicit operator bool() const { return stream || opened; }
    int descriptor() const { return number; }

    /// The next entry, without "." and ".."; null at the end and after an error. Valid until the
    /// next call.
    const dirent* next();
    /// The error that ended the names early; 0 when there was none.
    int readError() const { return failedWith; }

    /// The status of the folder itself.
    std::expected<StorageFileMetadata, int> status() const;
    /// The status of an entry. The error is ENOENT when there is none of that name any more.
    std::expected<StorageFileMetadata, int> status(const char* name) const;

private:
    struct Close {
        void operator()(DIR* opened) const { ::closedir(opened); }
    };

    bool startReading();

    int number = -1;
    /// Owns the descriptor until the names are asked for, which takes a buffer.
    FileDescriptor opened;
    std::unique_ptr<DIR, Close> stream;
    int failedWith = 0;
};

} // namespace tidemark
