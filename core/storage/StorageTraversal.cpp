#include "core/storage/StorageTraversal.h"

#include "core/base/Arithmetic.h"
#include "core/base/CanonicalPath.h"
#include "core/base/FileDescriptor.h"
#include "core/storage/StorageFileMetadata.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>

#include <fcntl.h>

namespace tidemark {

namespace {

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// How many names are read ahead to be put in order. More would not make the order much better,
/// and cost every resting walk memory.
constexpr std::size_t readAhead = 1024;

std::unexpected<StorageMeasurementFailure> failure(StorageMeasurementFailure reason) {
    return std::unexpected(reason);
}

bool isDotOrDotDot(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

} // namespace

StorageTraversal::StorageTraversal(std::string path, std::int64_t limit, RootFiles files)
    : rootPath(std::move(path)), entryLimit(limit), completed(rootPath) {
    if (files == RootFiles::named)
        directFileSizes.emplace();
}

std::optional<StorageTraversal> StorageTraversal::open(const std::filesystem::path& folder,
                                                       std::int64_t entryLimit, RootFiles files) {
    const auto path = canonicalPath(folder);
    const auto metadata = StorageFileMetadata::read(path);
    if (!metadata || !metadata->isDirectory())
        return std::nullopt;
    return StorageTraversal(path.native(), entryLimit, files);
}

std::optional<StorageTraversal::Result> StorageTraversal::step() {
    if (!std::exchange(started, true))
        return enterRoot();
    if (stack.empty())
        return failure(StorageMeasurementFailure::unreadable);
    if (reading && nextEntry == entries.size())
        readEntries();
    if (nextEntry < entries.size())
        return visitNext();
    if (reading)
        return std::nullopt;
    return stack.back().hasPending() ? enterNext() : leave();
}

std::optional<StorageTraversal::Result> StorageTraversal::enterRoot() {
    std::string_view name = lastPathComponent(rootPath);
    if (name == "/")
        name = {};
    return enter(AT_FDCWD, rootPath.c_str(), std::string(name));
}

std::optional<StorageTraversal::Result> StorageTraversal::enterNext() {
    if (!climb()) {
        readFailed = true;
        stack.back().pending.clear();
        return std::nullopt;
    }
    if (!countEntry())
        return failure(StorageMeasurementFailure::entryLimit);
    Directory& parent = stack.back();
    const char* path = parent.pending.c_str() + parent.pendingStart;
    std::string name(path);
    parent.pendingStart += name.size() + 1;
    return enter(::dirfd(here.get()), path, std::move(name));
}

std::optional<StorageTraversal::Result> StorageTraversal::enter(int parent, const char* path,
                                                                std::string name) {
    if (!isValidUtf8(stack.empty() ? rootPath : name))
        return failure(StorageMeasurementFailure::unreadable);
    FileDescriptor opened(::openat(parent, path, folderFlags));
    const auto metadata = StorageFileMetadata::readOpen(opened.get());
    if (!metadata || isCycle(metadata->device(), metadata->inode())) {
        readFailed = true;
        return std::nullopt;
    }
    if (metadata->isCloudOnly())
        return failure(StorageMeasurementFailure::cloudBacked);
    Stream stream(::fdopendir(opened.get()));
    if (!stream) {
        readFailed = true;
        return std::nullopt;
    }
    opened.release();

    const bool isRoot = stack.empty();
    const auto index =
        isRoot ? CompletedFolders::noFolder : completed.enter(stack.back().index, name);
    above = std::exchange(here, std::move(stream));
    hereLevel = stack.size();
    hereWasLinked = !metadata->isUnlinked();
    reading = true;
    stack.push_back({.name = std::move(name),
                     .device = metadata->device(),
                     .inode = metadata->inode(),
                     .index = index,
                     .totals = {},
                     .pending = {}});
    return std::nullopt;
}

bool StorageTraversal::isCycle(dev_t device, ino_t inode) const {
    // Without following links only a folder that is mounted below itself comes round again.
    return std::ranges::any_of(stack, [&](const Directory& folder) {
        return folder.inode == inode && folder.device == device;
    });
}

void StorageTraversal::readEntries() {
    entries.clear();
    entryNames.clear();
    nextEntry = 0;
    for (std::size_t taken = 0; taken < readAhead; ++taken) {
        errno = 0;
        const dirent* entry = ::readdir(here.get());
        if (!entry) {
            readFailed = readFailed || errno != 0;
            endReading();
            break;
        }
        if (isDotOrDotDot(entry->d_name))
            continue;
        const std::size_t size = std::strlen(entry->d_name) + 1;
        if (entry->d_type == DT_DIR) {
            stack.back().pending.append(entry->d_name, size);
            continue;
        }
        entries.push_back({entry->d_ino, entryNames.size()});
        entryNames.append(entry->d_name, size);
    }
    std::ranges::sort(entries, {}, &Entry::inode);
}

void StorageTraversal::endReading() {
    reading = false;
    // A folder that was removed after it was entered reads as an empty one.
    const auto metadata = StorageFileMetadata::readOpen(::dirfd(here.get()));
    if (!metadata || (metadata->isUnlinked() && hereWasLinked))
        readFailed = true;
}

std::optional<StorageTraversal::Result> StorageTraversal::visitNext() {
    const char* name = entryNames.c_str() + entries[nextEntry++].nameStart;
    const auto metadata = StorageFileMetadata::readEntry(::dirfd(here.get()), name);
    if (metadata && metadata->isDirectory()) {
        // The listing did not tell. It counts when it is entered.
        stack.back().pending.append(name, std::strlen(name) + 1);
        return std::nullopt;
    }
    if (!countEntry())
        return failure(StorageMeasurementFailure::entryLimit);
    if (!metadata)
        readFailed = true;
    else if (metadata->isRegularFile())
        addFile(name, metadata->bytes(), metadata->allocatedBytes());
    return std::nullopt;
}

void StorageTraversal::addFile(const char* name, std::int64_t bytes, std::int64_t allocatedBytes) {
    stack.back().totals.addFile(bytes, allocatedBytes);
    if (directFileSizes && stack.size() == 1 && isValidUtf8(name))
        directFileSizes->insert_or_assign(name, bytes);
    if (directFileSizes && directFileSizes->size() > FolderSize::directFileLimit)
        directFileSizes.reset();
}

std::optional<StorageTraversal::Result> StorageTraversal::leave() {
    const Directory folder = std::move(stack.back());
    stack.pop_back();
    if (stack.empty())
        return rootResult(folder);
    completed.complete(folder.index, folder.totals);
    stack.back().totals.addFolder(folder.totals);
    if (stack.size() == 1)
        rootBreakdown.insert_or_assign(folder.name, folder.totals.bytes);
    if (above && hereLevel == stack.size()) {
        here = std::move(above);
        --hereLevel;
    }
    return std::nullopt;
}

bool StorageTraversal::climb() {
    if (hereLevel == stack.size() - 1)
        return true;
    while (hereLevel > stack.size() - 1) {
        FileDescriptor parent(::openat(::dirfd(here.get()), "..", folderFlags));
        const auto metadata = StorageFileMetadata::readOpen(parent.get());
        const Directory& expected = stack[hereLevel - 1];
        // A folder that was moved meanwhile has another parent now.
        if (!metadata || metadata->device() != expected.device
            || metadata->inode() != expected.inode)
            return false;
        Stream stream(::fdopendir(parent.get()));
        if (!stream)
            return false;
        parent.release();
        here = std::move(stream);
        --hereLevel;
    }
    return true;
}

StorageTraversal::Result StorageTraversal::rootResult(const Directory& root) {
    if (readFailed)
        return failure(StorageMeasurementFailure::unreadable);
    FolderSize size;
    size.path = rootPath;
    size.name = root.name;
    size.bytes = root.totals.bytes;
    size.allocatedBytes = root.totals.allocatedBytes;
    if (root.totals.ownFileBytes) {
        auto& own = rootBreakdown[std::string(FolderSize::filesInFolder)];
        own = saturatingSum(own, *root.totals.ownFileBytes);
    }
    size.breakdown.emplace(std::move(rootBreakdown));
    if (directFileSizes)
        size.directFileSizes.emplace(*std::move(directFileSizes));
    size.rollingMeasurement = false;
    return size;
}

} // namespace tidemark
