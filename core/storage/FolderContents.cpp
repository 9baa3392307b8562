#include "core/storage/FolderContents.h"

#include "core/base/Arithmetic.h"
#include "core/base/Text.h"
#include "core/storage/FolderReader.h"
#include "core/system/TrashFolder.h"

#include <cerrno>

namespace tidemark {

namespace {

using Failure = StorageMeasurementFailure;

constexpr std::int64_t entryLimit = 100'000;
constexpr double timeLimit = 3;

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
    auto reader = FolderReader::openRoot(folder);
    if (!reader)
        return std::unexpected(reader.error());

    FolderContents listing;
    std::int64_t enumerated = 0;
    while (const dirent* entry = reader->next()) {
        if (enumerated++ == entryLimit)
            return std::unexpected(Failure::entryLimit);
        if (clock.monotonicSeconds() > deadline)
            return std::unexpected(Failure::timeLimit);
        if (stop.stop_requested())
            return std::unexpected(Failure::cancelled);
        if (TrashFolder::isFileManagersOwn(folder.native(), entry->d_name))
            continue;
        const auto metadata = reader->status(entry->d_name);
        // The entry was removed after its name was read.
        if (!metadata && metadata.error() == ENOENT)
            continue;
        if (!metadata)
            return std::unexpected(Failure::unreadable);
        ++listing.itemCount;
        addEntry(listing, folder, entry->d_name, *metadata);
    }
    if (reader->readError() != 0)
        return std::unexpected(Failure::unreadable);
    return listing;
}

} // namespace tidemark
