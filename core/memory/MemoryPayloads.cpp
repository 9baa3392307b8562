#include "core/memory/MemoryPayloads.h"

#include "core/base/FileDescriptor.h"
#include "core/base/Files.h"
#include "core/memory/MemoryArchive.h"

#include <cerrno>
#include <memory>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace tidemark {

namespace {

FileDescriptor opened(const std::filesystem::path& folder) {
    FileDescriptor directory(
        ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!directory)
        throw FileError::ofSystem(folder, "could not be opened", errno);
    return directory;
}

/// The names of all entries except folders.
std::vector<std::string> fileNames(const std::filesystem::path& folder, int descriptor) {
    // closedir(3) closes the descriptor that it was given.
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(
        ::fdopendir(::fcntl(descriptor, F_DUPFD_CLOEXEC, 0)), ::closedir);
    if (!entries)
        throw FileError::ofSystem(folder, "could not be read", errno);
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* entry = ::readdir(entries.get())) {
        struct stat status{};
        if (::fstatat(descriptor, entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0
            && !S_ISDIR(status.st_mode))
            names.emplace_back(entry->d_name);
        errno = 0;
    }
    if (errno != 0)
        throw FileError::ofSystem(folder, "could not be read", errno);
    return names;
}

} // namespace

std::string MemoryPayloads::read(const std::string& name) const {
    const auto path = folder / name;
    const auto directory = opened(folder);
    const FileDescriptor file(
        ::openat(directory.get(), name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
    if (!file)
        throw FileError::ofSystem(path, "could not be read", errno);
    // A byte that is not UTF-8 was stored as U+FFFD, which takes three bytes.
    return readFile(file, path, 3 * MemoryArchive::clipByteLimit);
}

void MemoryPayloads::prepare() const {
    guard.require();
    if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST)
        throw FileError::ofSystem(folder, "could not be created", errno);
    const auto directory = opened(folder);
    if (::fchmod(directory.get(), 0700) != 0)
        throw FileError::ofSystem(folder, "could not be made private", errno);
}

bool MemoryPayloads::contains(const std::string& name) const {
    struct stat status{};
    return ::lstat((folder / name).c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

void MemoryPayloads::write(const std::string& name, std::string_view bytes) const {
    replaceFile(folder / name, bytes, guard);
}

void MemoryPayloads::keepOnly(const std::set<std::string>& wanted) const {
    const auto directory = opened(folder);
    // After the folder is open: from here on it is used by its descriptor, not by its name.
    guard.require();
    for (const auto& name : fileNames(folder, directory.get()))
        if (!wanted.contains(name) && ::unlinkat(directory.get(), name.c_str(), 0) != 0
            && errno != ENOENT)
            throw FileError::ofSystem(folder / name, "could not be deleted", errno);
}

} // namespace tidemark
