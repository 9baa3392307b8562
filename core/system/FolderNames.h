#pragma once

#include "core/base/FileDescriptor.h"

#include <memory>

#include <dirent.h>

namespace tidemark {

/// Reads the names in one open folder, in the order of the system and with "." and "..".
class FolderNames {
public:
    /// Holds no folder.
    FolderNames() = default;
    /// Takes the descriptor of a folder.
    explicit FolderNames(FileDescriptor folder) : folder(std::move(folder)) {}

    /// -1 when no folder is open.
    int descriptor() const { return folder.get(); }

    /// The next entry; null at the end and after an error. Valid until the next call.
    const dirent* next();
    /// The `errno` value that ended `next` early; 0 when there was none.
    int error() const { return failedWith; }

private:
    struct Batch;
    struct Delete {
        void operator()(Batch* batch) const;
    };

    FileDescriptor folder;
    /// The entries read last, or on a Mac the folder's stream; made by the first `next`.
    std::unique_ptr<Batch, Delete> batch;
    int failedWith = 0;
};

} // namespace tidemark
