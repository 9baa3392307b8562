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

/// The process that has locked a folder.
struct FolderHolder {
    std::filesystem::path folder;
    /// The number in the lock file; just after the folder was locked, it can be that of an earlier
    /// process. Absent when the file has none, as on a full disk.
    std::optional<pid_t> process;

    /// "Tidemark is already recording into /home/me/data (process 123)."
    std::string sentence() const;
};

/// Exclusive ownership of a folder among all processes, for the lifetime of this object. It is an
/// flock(2) lock on the file "recorder.lock" in the folder, so the kernel releases it however the
/// process ends. The file stays. It contains the number of the process that locked it last, for
/// `FolderHolder`; the lock itself does not depend on that number.
class FolderLock {
public:
    /// Locks an existing folder. Doesn't wait until another owner ends, but waits up to 20 ms for
    /// processes that are calling `holder`. Throws `FileError` when the lock file can't be created
    /// or locked, as in a folder without write permission.
    static std::expected<FolderLock, FolderHolder> take(const std::filesystem::path& folder);

    /// The process, maybe this one, that has locked the folder at this moment. Absent when none
    /// has, and for a folder without a lock file or one that can't be read. Asking takes a shared
    /// lock for an instant.
    static std::optional<FolderHolder> holder(const std::filesystem::path& folder);
    /// Whether any process has locked the folder at this moment, as `holder` finds out.
    static bool isTaken(const std::filesystem::path& folder) { return holder(folder).has_value(); }

    /// False once the lock file was removed or replaced: another process may have locked the folder
    /// then. Thread-safe.
    bool isCurrent() const;
    /// A guard that permits writing while this lock exists and `isCurrent`.
    FolderGuard guard() const;

    FolderLock(FolderLock&&) = default;
    FolderLock& operator=(FolderLock&&) = default;

private:
    struct LockedFile;

    explicit FolderLock(std::shared_ptr<const LockedFile> locked) : file(std::move(locked)) {}

    /// The guards hold weak references, so they throw once this lock is destroyed.
    std::shared_ptr<const LockedFile> file;
};

} // namespace tidemark
