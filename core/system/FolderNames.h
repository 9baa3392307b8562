#pragma once

#include "core/base/FileDescriptor.h"

#include <memory>

#include <dirent.h>

namespace tidemark {

/// The names in one open folder, one after the other, as the system reports them: in no order,
/// with "." and "..".
class FolderNames {
public:
    /// Holds no folder.
    FolderNames() = default;
    /// Takes the descriptor of a folder.
    explicit FolderNames(FileDescriptor opened) : folder(std::move(opened)) {}

    /// -1 when no folder is open.
    int descriptor() const { return folder.get(); }

    /// The next entry; null at the end and after an error. Valid until the next call.
    const dirent* next();
    /// The `errno` that ended the names early; 0 when there was none.
    int error() const { return failedWith; }

private:
    struct Batch;
    struct Delete {
        void operator()(Batch* batch) const;
    };

    FileDescriptor folder;
    /// What the system handed over last; made at the first name.
    std::unique_ptr<Batch, Delete> batch;
    int failedWith = 0;
};

} // namespace tidemark
