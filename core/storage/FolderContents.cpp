#include "core/storage/FolderContents.h"

#include "core/base/Arithmetic.h"
#include "core/base/FileDescriptor.h"
#include "core/base/Text.h"
#include "core/storage/StorageFileMetadata.h"
#include "core/system/TrashFolder.h"

#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>

namespace tidemark {

namespace {

using Failure = StorageMeasurementFailure;

constexpr std::int64_t entryLimit = 100'000;
constexpr double timeLimit = 3;

struct StreamCloser {
    void operator()(DIR* stream) const { ::closedir(stream); }
};
using Stream = std::unique_ptr<DIR, StreamCloser>;

Stream openStream(const std::filesystem::path& folder) {
    FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    Stream stream(opened ? ::fdopendir(opened.get()) : nullptr);
    if (stream)
        opened.release();
    return stream;
}

std::optional<Failure> refusal(const std::filesystem::path& folder) {
    const auto metadata = StorageFileMetadata::read(folder);
    if (!metadata)
        return metadata.error();
    if (!metadata->isDirectory())
        return Failure::unavailable;
    if (metadata->isCloudOnly())
        return Failure::cloudBacked;
    return std::nullopt;
}

void addEntry(FolderContents& listing, const std::filesystem::path& folder, const char* name,
              const StorageFileMetadata& metadata) {
    if (metadata.isDirectory()) {
        listing.subfolders.push_back(
            StorageMeasurementItem::directory(folder / name, metadata.modified()));
    } else if (metadata.isRegularFile()) {
        listing.fileSizes.insert_or_assign(textFromBytes(name), metadata.bytes());
        listing.fileBytes = saturatingSum(listing.fileBytes, metadata.bytes());
        listing.fileAllocatedBytes =
            saturatingSum(listing.fileAllocatedBytes, metadata.allocatedBytes());
    }
}

} // namespace

std::expected<FolderContents, StorageMeasurementFailure>
listContents(const std::filesystem::path& folder, Clock& clock, const std::stop_token& stop) {
    const double deadline = clock.monotonicSeconds() + timeLimit;
    if (const auto reason = refusal(folder))
        return std::unexpected(*reason);
    const Stream stream = openStream(folder);
    if (!stream)
        return std::unexpected(Failure::unavailable);

    FolderContents listing;
    std::int64_t enumerated = 0;
    while (true) {
        errno = 0;
        const dirent* entry = ::readdir(stream.get());
        if (!entry)
            break;
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        if (enumerated++ == entryLimit)
            return std::unexpected(Failure::entryLimit);
        if (clock.monotonicSeconds() > deadline)
            return std::unexpected(Failure::timeLimit);
        if (stop.stop_requested())
            return std::unexpected(Failure::cancelled);
        if (TrashFolder::isFileManagersOwn(folder.native(), name))
            continue;
        ++listing.itemCount;
        const auto metadata = StorageFileMetadata::readEntry(::dirfd(stream.get()), entry->d_name);
        if (!metadata)
            return std::unexpected(Failure::unreadable);
        addEntry(listing, folder, entry->d_name, *metadata);
    }
    if (errno != 0)
        return std::unexpected(Failure::unreadable);
    return listing;
}

} // namespace tidemark
