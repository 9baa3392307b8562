#include "core/storage/FolderReader.h"

#include <cerrno>

#include <fcntl.h>

namespace tidemark {

namespace {

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

bool isDotOrDotDot(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

} // namespace

FolderReader::FolderReader(FileDescriptor folder)
    : number(folder.get()), opened(std::move(folder)) {}

std::expected<FolderReader, int> FolderReader::open(int parent, const char* name) {
    FileDescriptor folder(::openat(parent, name, folderFlags));
    if (!folder)
        return std::unexpected(errno);
    return FolderReader(std::move(folder));
}

std::expected<FolderReader, StorageMeasurementFailure>
FolderReader::openRoot(const std::filesystem::path& path) {
    const auto metadata = StorageFileMetadata::readEntry(AT_FDCWD, path.c_str());
    if (!metadata)
        return std::unexpected(StorageMeasurementFailure::unreadable);
    if (!metadata->isDirectory())
        return std::unexpected(StorageMeasurementFailure::unavailable);
    if (metadata->isCloudOnly())
        return std::unexpected(StorageMeasurementFailure::cloudBacked);
    auto folder = open(AT_FDCWD, path.c_str());
    if (!folder)
        return std::unexpected(StorageMeasurementFailure::unavailable);
    return *std::move(folder);
}

bool FolderReader::startReading() {
    stream.reset(::fdopendir(opened.get()));
    if (!stream)
        return false;
    opened.release();
    return true;
}

const dirent* FolderReader::next() {
    errno = 0;
    if (stream || startReading())
        while (const dirent* entry = ::readdir(stream.get()))
            if (!isDotOrDotDot(entry->d_name))
                return entry;
    failedWith = errno;
    return nullptr;
}

std::expected<StorageFileMetadata, int> FolderReader::status() const {
    return StorageFileMetadata::readOpen(number);
}

std::expected<StorageFileMetadata, int> FolderReader::status(const char* name) const {
    return StorageFileMetadata::readEntry(number, name);
}

} // namespace tidemark
