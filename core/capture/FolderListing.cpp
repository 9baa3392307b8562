#include "core/capture/FolderListing.h"

#include "core/base/Files.h"
#include "core/base/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include <sys/stat.h>

namespace tidemark {

namespace {

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK;

FolderEntry::Kind kindOf(mode_t mode) {
    if (S_ISREG(mode))
        return FolderEntry::Kind::regular;
    if (S_ISDIR(mode))
        return FolderEntry::Kind::folder;
    return S_ISLNK(mode) ? FolderEntry::Kind::link : FolderEntry::Kind::other;
}

Date modificationDate(const struct stat& status) {
#if defined(__APPLE__)
    const timespec& time = status.st_mtimespec;
#else
    const timespec& time = status.st_mtim;
#endif
    return Date::fromUnix(static_cast<double>(time.tv_sec))
           + static_cast<double>(time.tv_nsec) * 1e-9;
}

} // namespace

FolderEntry FolderEntry::describe(int descriptor, const std::filesystem::path& folderPath,
                                  const std::string& name) {
    FolderEntry entry{.folder = descriptor, .path = folderPath / name, .modified = {}};
    struct stat status{};
    if (::fstatat(descriptor, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) {
        entry.kind = kindOf(status.st_mode);
        entry.modified = modificationDate(status);
    } else if (errno == ENOENT) {
        entry.kind = Kind::missing;
    }
    return entry;
}

std::string FolderEntry::pathText() const {
    return textFromBytes(path.native());
}

std::string FolderEntry::extension() const {
    const std::string dotted = path.extension().native();
    return dotted.empty() ? dotted : dotted.substr(1);
}

FileDescriptor FolderEntry::openFolder() const {
    return FileDescriptor(::openat(folder, name().c_str(), folderFlags));
}

std::string FolderEntry::read(std::size_t limit) const {
    // Opening a device can have effects, so what is known to be none is not even opened.
    if (kind != Kind::regular)
        throw FileError(path, "is not a regular file");
    const FileDescriptor file(
        ::openat(folder, name().c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file)
        throw FileError(path, "could not be opened", errno);
    return readFile(file, path, limit);
}

std::expected<void, FolderListing::Failure> FolderListing::fill(FileDescriptor folder,
                                                                Hidden hidden) {
    if (!folder)
        return std::unexpected(errno == ENOENT ? Failure::missing : Failure::unreadable);
    stream.reset(::fdopendir(folder.get()));
    if (!stream)
        return std::unexpected(Failure::unreadable);
    folder.release();
    while (true) {
        errno = 0;
        const dirent* entry = ::readdir(stream.get());
        if (!entry && errno != 0)
            return std::unexpected(Failure::unreadable);
        if (!entry)
            break;
        const std::string_view name = entry->d_name;
        const bool visible =
            hidden == Hidden::listed ? name != "." && name != ".." : !name.starts_with('.');
        if (visible)
            all.emplace_back(name);
    }
    std::ranges::sort(all);
    return {};
}

std::expected<FolderListing, FolderListing::Failure>
FolderListing::open(const std::filesystem::path& path, Hidden hidden) {
    // A slash at the end would have a link followed after all.
    FolderListing listing(path.has_filename() ? path : path.parent_path());
    const auto filled =
        listing.fill(FileDescriptor(::open(listing.location.c_str(), folderFlags)), hidden);
    if (!filled)
        return std::unexpected(filled.error());
    return listing;
}

std::expected<FolderListing, FolderListing::Failure> FolderListing::open(const FolderEntry& folder,
                                                                         Hidden hidden) {
    FolderListing listing(folder.path);
    const auto filled = listing.fill(folder.openFolder(), hidden);
    if (!filled)
        return std::unexpected(filled.error());
    return listing;
}

FolderEntry FolderListing::entry(const std::string& name) const {
    return FolderEntry::describe(::dirfd(stream.get()), location, name);
}

} // namespace tidemark
