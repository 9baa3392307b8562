#pragma once

#include "core/base/FileDescriptor.h"
#include "core/base/FolderGuard.h"

#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include <sys/types.h>

namespace tidemark {

/// Who has a folder that could not be taken.
struct FolderHolder {
    std::filesystem::path folder;
    /// Absent in the moment between taking the folder and writing the number down.
    std::optional<pid_t> process;

    /// "Tidemark is already recording into /home/me/data (process 123)."
    std::string sentence() const;
};

/// A folder that belongs to this object alone, in all processes, as long as it lives. The system
/// holds the lock (flock(2)) on the file "recorder.lock" in the folder, so it goes with the
/// process however that ends; the file itself stays, and what is written in it means nothing.
class FolderLock {
public:
    /// Takes a folder that exists. Never waits. Throws `FileError` when the file can't be made or
    /// locked, such as in a folder without the right to write.
    static std::expected<FolderLock, FolderHolder> take(const std::filesystem::path& folder);

    /// False once another file, or none, has the name of the locked one: then somebody else may
    /// have taken the folder. Any thread may ask.
    bool isCurrent() const;
    /// Permits writing for as long as this lock lives and its file has its name. Another file, or
    /// none, by that name means that somebody else may have taken the folder.
    FolderGuard guard() const;

    FolderLock(FolderLock&&) = default;
    FolderLock& operator=(FolderLock&&) = default;

private:
    struct LockedFile;

    explicit FolderLock(std::shared_ptr<const LockedFile> locked) : file(std::move(locked)) {}

    /// Shared with the guards only while they look at it.
    std::shared_ptr<const LockedFile> file;
};

} // namespace tidemark
