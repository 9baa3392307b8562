#include "core/base/Files.h"

#include "core/base/CanonicalPath.h"
#include "core/base/Uuid.h"

#include <cerrno>
#include <expected>
#include <optional>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace tidemark {

namespace {

constexpr std::size_t writeBufferSize = 1 << 18;
/// Bytes to read at a time from a file that turns out larger than its status said.
constexpr std::size_t growth = 1 << 16;

/// Every temporary file of one target starts with this; the rest is a random identifier. The
/// name is cut so that the whole stays within the 255 bytes of a file name.
std::string temporaryPrefix(const std::filesystem::path& target) {
    return "." + target.filename().native().substr(0, 200) + ".new-";
}

std::filesystem::path folderOf(const std::filesystem::path& path) {
    const auto parent = path.parent_path();
    return parent.empty() ? std::filesystem::path(".") : parent;
}

/// Returns how many bytes were read: fewer than `size` only at the end of the file. When exactly
/// `expected` bytes have arrived, that is taken for the end, which saves the read(2) that would
/// return 0. The error is an `errno`.
std::expected<std::size_t, int> readUntilFull(const FileDescriptor& file, char* data,
                                              std::size_t size,
                                              std::optional<std::size_t> expected) {
    std::size_t filled = 0;
    while (filled < size) {
        const ssize_t count = ::read(file.get(), data + filled, size - filled);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::unexpected(errno);
        filled += static_cast<std::size_t>(count);
        if (count == 0 || filled == expected)
            break;
    }
    return filled;
}

} // namespace

std::string readFile(const std::filesystem::path& path, std::size_t limit) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file)
        throw FileError::ofSystem(path, "could not be read", errno);
    return readFile(file, path, limit);
}

std::string readFile(const FileDescriptor& file, const std::filesystem::path& path,
                     std::size_t limit) {
    struct stat status{};
    if (::fstat(file.get(), &status) != 0)
        throw FileError::ofSystem(path, "could not be read", errno);
    if (S_ISDIR(status.st_mode))
        throw FileError::ofSystem(path, "could not be read", EISDIR);
    if (!S_ISREG(status.st_mode))
        throw FileError(path, "is not a regular file");
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > limit)
        throw FileError::ofSystem(path, "could not be read", EFBIG);

    std::string bytes;
    // With one byte of room beyond the size, a full buffer means that the file has grown.
    for (std::size_t room = size + 1;; room += growth) {
        int failure = 0;
        bytes.resize_and_overwrite(
            room, [&, filled = bytes.size()](char* data, std::size_t) noexcept {
                const auto count = readUntilFull(file, data + filled, room - filled,
                                                 filled == 0 ? std::optional(size) : std::nullopt);
                failure = count ? 0 : count.error();
                return filled + count.value_or(0);
            });
        if (failure != 0)
            throw FileError::ofSystem(path, "could not be read", failure);
        if (bytes.size() > limit)
            throw FileError::ofSystem(path, "could not be read", EFBIG);
        if (bytes.size() < room)
            return bytes;
    }
}

bool fileExists(const std::filesystem::path& path) {
    struct stat status{};
    if (::lstat(path.c_str(), &status) == 0)
        return true;
    if (errno == ENOENT || errno == ENOTDIR)
        return false;
    throw FileError::ofSystem(path, "could not be inspected", errno);
}

void createPrivateFolders(const std::filesystem::path& folder, const FolderGuard& guard) {
    guard.require();
    // The guarded folder may be removed after the check, and must not be created again then.
    if (folder.empty() || folder == guard.guarded() || ::mkdir(folder.c_str(), 0700) == 0)
        return;
    if (errno == ENOENT) {
        createPrivateFolders(folder.parent_path(), guard);
        if (::mkdir(folder.c_str(), 0700) == 0)
            return;
    }
    const int code = errno;
    struct stat status{};
    if (::stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        throw FileError::ofSystem(folder, "could not be created", code);
}

std::filesystem::path replaceablePath(const std::filesystem::path& path) {
    struct stat status{};
    if (::lstat(path.c_str(), &status) != 0) {
        if (errno == ENOENT || errno == ENOTDIR)
            return path;
        throw FileError::ofSystem(path, "could not be written", errno);
    }
    const bool isLink = S_ISLNK(status.st_mode);
    if (isLink && ::stat(path.c_str(), &status) != 0)
        throw FileError::ofSystem(path, "could not be written", errno);
    if (!S_ISREG(status.st_mode))
        throw FileError(path, "is not a regular file");
    return isLink ? canonicalPath(path) : path;
}

void flushFolder(const std::filesystem::path& folder) {
    const char* path = folder.empty() ? "." : folder.c_str();
    const FileDescriptor directory(::open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!directory || ::fsync(directory.get()) != 0) {
        // Some file systems can't flush a folder; the rename itself has happened.
        if (errno != EINVAL && errno != EACCES)
            throw FileError::ofSystem(folder, "could not be flushed", errno);
    }
}

FileReplacement::FileReplacement(std::filesystem::path path, const FolderGuard& guard)
    : target(std::move(path)), guard(guard) {
    guard.require();
    removeLeftovers(target);
    // The lock shows `removeLeftovers` in other processes that this file is in use. Between
    // creating and locking it, another process may have removed it as a leftover; then a new one is
    // made.
    for (int attempt = 0; attempt < 10; ++attempt) {
        temporary = folderOf(target) / (temporaryPrefix(target) + Uuid::random().text());
        file = FileDescriptor(
            ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600));
        if (!file)
            throw FileError::ofSystem(target, "could not be written", errno);
        struct stat status{};
        if (::flock(file.get(), LOCK_EX | LOCK_NB) == 0 && ::fstat(file.get(), &status) == 0
            && status.st_nlink == 1)
            return;
        ::unlink(temporary.c_str());
    }
    throw FileError::ofSystem(target, "could not be written", EBUSY);
}

FileReplacement::~FileReplacement() {
    if (file)
        ::unlink(temporary.c_str());
}

void FileReplacement::fail() const {
    throw FileError::ofSystem(target, "could not be written", errno);
}

void FileReplacement::write(std::string_view bytes) {
    buffer.append(bytes);
    if (buffer.size() >= writeBufferSize)
        flush();
}

void FileReplacement::flush() {
    std::string_view rest = buffer;
    while (!rest.empty()) {
        const ssize_t count = ::write(file.get(), rest.data(), rest.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            fail();
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
    buffer.clear();
}

void FileReplacement::commit() {
    flush();
    if (::fsync(file.get()) != 0)
        fail();
    // The folder may have been replaced since the temporary file was made.
    guard.require();
    if (::rename(temporary.c_str(), target.c_str()) != 0)
        fail();
    file.reset();
    flushFolder(folderOf(target));
}

void FileReplacement::removeLeftovers(const std::filesystem::path& path) {
    const std::string prefix = temporaryPrefix(path);
    std::error_code error;
    for (std::filesystem::directory_iterator entries(folderOf(path), error), end;
         !error && entries != end; entries.increment(error)) {
        const auto& entry = entries->path();
        const std::string name = entry.filename().native();
        if (!name.starts_with(prefix) || !Uuid::parse(std::string_view(name).substr(prefix.size())))
            continue;
        const FileDescriptor leftover(
            ::open(entry.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
        if (leftover && ::flock(leftover.get(), LOCK_EX | LOCK_NB) == 0)
            ::unlink(entry.c_str());
    }
}

void replaceFile(const std::filesystem::path& path, std::string_view bytes,
                 const FolderGuard& guard) {
    FileReplacement replacement(path, guard);
    replacement.write(bytes);
    replacement.commit();
}

} // namespace tidemark
