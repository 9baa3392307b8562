#include "core/base/FolderLock.h"

#include "core/base/FileError.h"
#include "core/base/Text.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <string_view>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace tidemark {

namespace {

constexpr const char* lockName = "recorder.lock";
/// How many times locking is tried while the only locks are those of `holder` in other processes,
/// which last some microseconds each.
constexpr int mostAsked = 20;
constexpr std::chrono::milliseconds askedPause{1};

bool isFileAt(const FileDescriptor& file, const std::filesystem::path& path) {
    struct stat opened{};
    struct stat named{};
    return ::fstat(file.get(), &opened) == 0 && ::lstat(path.c_str(), &named) == 0
           && opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

FileDescriptor openLockFile(const std::filesystem::path& path) {
    // O_NONBLOCK, so that opening a FIFO with this name does not block.
    FileDescriptor file(
        ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
    struct stat status{};
    if (!file || ::fstat(file.get(), &status) != 0)
        throw FileError::ofSystem(path.parent_path(), "could not be locked", errno);
    if (!S_ISREG(status.st_mode))
        throw FileError::ofSystem(path.parent_path(), "could not be locked", EINVAL);
    return file;
}

/// True when no process has the file locked exclusively. The locks of `holder` are shared.
bool isOnlyAsked(const FileDescriptor& file) {
    return ::flock(file.get(), LOCK_SH | LOCK_NB) == 0 && ::flock(file.get(), LOCK_UN) == 0;
}

std::optional<pid_t> processIn(const FileDescriptor& file) {
    std::array<char, 16> text{};
    const ssize_t count = ::pread(file.get(), text.data(), text.size(), 0);
    pid_t process = 0;
    if (count <= 0 || std::from_chars(text.data(), text.data() + count, process).ec != std::errc())
        return std::nullopt;
    return process;
}

void noteProcess(const FileDescriptor& file) {
    const std::string text = std::to_string(::getpid()) + "\n";
    // On a full disk the file is locked without the number of the process.
    if (::ftruncate(file.get(), 0) == 0)
        static_cast<void>(::pwrite(file.get(), text.data(), text.size(), 0) < 0);
}

} // namespace

struct FolderLock::LockedFile {
    FileDescriptor descriptor;
    std::filesystem::path path;
};

std::string FolderHolder::sentence() const {
    return "Tidemark is already recording into " + textFromBytes(folder.native())
           + (process ? " (process " + std::to_string(*process) + ")." : ".");
}

std::expected<FolderLock, FolderHolder> FolderLock::take(const std::filesystem::path& folder) {
    const auto path = folder / lockName;
    for (int asked = 0;;) {
        FileDescriptor file = openLockFile(path);
        if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
            if (errno == EINTR)
                continue;
            if (errno != EWOULDBLOCK)
                throw FileError::ofSystem(folder, "could not be locked", errno);
            if (!isOnlyAsked(file) || ++asked == mostAsked)
                return std::unexpected(FolderHolder{folder, processIn(file)});
            std::this_thread::sleep_for(askedPause);
            continue;
        }
        // If the file was removed after it was opened, other processes don't see this lock.
        if (!isFileAt(file, path))
            continue;
        noteProcess(file);
        return FolderLock(std::make_shared<LockedFile>(std::move(file), path));
    }
}

std::optional<FolderHolder> FolderLock::holder(const std::filesystem::path& folder) {
    const FileDescriptor file(
        ::open((folder / lockName).c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!file || ::flock(file.get(), LOCK_SH | LOCK_NB) == 0 || errno != EWOULDBLOCK)
        return std::nullopt;
    return FolderHolder{folder, processIn(file)};
}

bool FolderLock::isCurrent() const {
    return isFileAt(file->descriptor, file->path);
}

FolderGuard FolderLock::guard() const {
    const auto isOwn = [held = std::weak_ptr(file)] {
        const auto locked = held.lock();
        return locked && isFileAt(locked->descriptor, locked->path);
    };
    return FolderGuard(isOwn, file->path.parent_path());
}

} // namespace tidemark
