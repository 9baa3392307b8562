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
    if (metadata->isCloudOnly)
        return std::unexpected(StorageMeasurementFailure::cloudBacked);
    auto folder = open(AT_FDCWD, path.c_str());
    if (!folder)
        return std::unexpected(StorageMeasurementFailure::unavailable);
    return *std::move(folder);
}

const dirent* FolderReader::next() {
    while (const dirent* entry = names.next())
        if (!isDotOrDotDot(entry->d_name))
            return entry;
    return nullptr;
}

std::expected<StorageFileMetadata, int> FolderReader::status() const {
    return StorageFileMetadata::readOpen(names.descriptor());
}

std::expected<StorageFileMetadata, int> FolderReader::status(const char* name) const {
    return StorageFileMetadata::readEntry(names.descriptor(), name);
}

} // namespace tidemark
