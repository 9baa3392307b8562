#include "core/capture/FolderListing.h"

#include "core/base/Files.h"
#include "core/base/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>

#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tidemark {

namespace {

/// The clock is read once per this many names, because reading it takes longer than listing one.
constexpr std::size_t namesBetweenChecks = 1'024;
constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK;

FolderEntry::Kind kindOf(const StorageFileMetadata& status) {
    if (status.isRegularFile())
        return FolderEntry::Kind::regular;
    if (status.isDirectory())
        return FolderEntry::Kind::folder;
    return status.isSymbolicLink() ? FolderEntry::Kind::link : FolderEntry::Kind::other;
}

FolderListing::Failure failureOf(int code) {
    return code == ENOENT ? FolderListing::Failure::missing : FolderListing::Failure::unreadable;
}

Date dateOf(const FileTime& time) {
    return Date::fromUnix(static_cast<double>(time.seconds))
           + static_cast<double>(time.nanoseconds) * 1e-9;
}

} // namespace

FolderEntry FolderEntry::describe(int descriptor, const std::filesystem::path& folderPath,
                                  const std::string& name) {
    FolderEntry entry{
        .folder = descriptor, .path = folderPath / name, .modified = {}, .sharedVersion = {}};
    if (const auto status = StorageFileMetadata::readEntry(descriptor, name.c_str())) {
        entry.kind = kindOf(*status);
        entry.modified = dateOf(status->version.modified);
        if (entry.kind == Kind::regular)
            entry.size = status->version.bytes;
        entry.isExecutable = (status->mode & (S_IXUSR | S_IXGRP | S_IXOTH)) != 0;
        if (entry.kind == Kind::regular && status->names > 1)
            entry.sharedVersion = status->version;
    } else if (status.error() == ENOENT) {
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

std::string FolderEntry::linkText() const {
    std::array<char, PATH_MAX> text;
    const ssize_t length = ::readlinkat(folder, name().c_str(), text.data(), text.size());
    return length > 0 ? std::string(text.data(), static_cast<std::size_t>(length)) : std::string();
}

FileDescriptor FolderEntry::openFile() const {
    // Opening a device can have effects, so only regular files are opened.
    if (kind != Kind::regular)
        throw FileError(path, "is not a regular file");
    FileDescriptor file(
        ::openat(folder, name().c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file)
        throw FileError::ofSystem(path, "could not be opened", errno);
    return file;
}

std::string FolderEntry::read(std::size_t limit) const {
    return readFile(openFile(), path, limit);
}

std::string FolderEntry::readStart(std::size_t count) const {
    const FileDescriptor file = openFile();
    std::string bytes(count, '\0');
    std::size_t filled = 0;
    while (filled < count) {
        const ssize_t got =
            ::pread(file.get(), bytes.data() + filled, count - filled, static_cast<off_t>(filled));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            throw FileError::ofSystem(path, "could not be read", errno);
        if (got == 0)
            break;
        filled += static_cast<std::size_t>(got);
    }
    bytes.resize(filled);
    return bytes;
}

std::expected<void, FolderListing::Failure>
FolderListing::fill(std::expected<FolderReader, int> opened, Hidden hidden,
                    const ReadingBudget& budget) {
    if (!opened)
        return std::unexpected(failureOf(opened.error()));
    folder = *std::move(opened);
    for (std::size_t seen = 1; const dirent* entry = folder.next(); ++seen) {
        if (seen % namesBetweenChecks == 0 && budget.isSpent())
            return std::unexpected(Failure::unreadable);
        if (hidden == Hidden::listed || entry->d_name[0] != '.')
            all.emplace_back(entry->d_name);
    }
    if (folder.readError() != 0)
        return std::unexpected(Failure::unreadable);
    std::ranges::sort(all);
    return {};
}

std::expected<FolderListing, FolderListing::Failure>
FolderListing::open(const MachineFiles& machine, const std::filesystem::path& path, Hidden hidden,
                    const ReadingBudget& budget) {
    // With a slash at the end, a link would be followed.
    FolderListing listing(path.has_filename() ? path : path.parent_path());
    auto opened = machine.open(listing.location, O_RDONLY | O_DIRECTORY);
    if (!opened)
        return std::unexpected(failureOf(opened.error()));
    const auto filled = listing.fill(FolderReader(*std::move(opened)), hidden, budget);
    if (!filled)
        return std::unexpected(filled.error());
    return listing;
}

std::expected<FolderListing, FolderListing::Failure>
FolderListing::open(const FolderEntry& folder, Hidden hidden, const ReadingBudget& budget) {
    FolderListing listing(folder.path);
    const auto filled =
        listing.fill(FolderReader::open(folder.folder, folder.name().c_str()), hidden, budget);
    if (!filled)
        return std::unexpected(filled.error());
    return listing;
}

FolderEntry FolderListing::entry(const std::string& name) const {
    return FolderEntry::describe(folder.descriptor(), location, name);
}

} // namespace tidemark
