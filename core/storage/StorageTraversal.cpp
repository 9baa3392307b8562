#include "core/storage/StorageTraversal.h"

#include "core/base/Arithmetic.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>

namespace tidemark {

namespace {

/// How many names are read ahead and sorted. More would take memory and hardly improve the order.
constexpr std::int64_t readAhead = 1024;
/// How many names are still read after a stop, so that the walk can be resumed: some hundredths of
/// a second on a local disk.
constexpr std::int64_t readAfterStop = 65'536;

std::unexpected<StorageMeasurementFailure> failure(StorageMeasurementFailure reason) {
    return std::unexpected(reason);
}

} // namespace

StorageTraversal::StorageTraversal(std::string rootPath, std::int64_t entryLimit,
                                   RootFiles rootFiles)
    : rootPath(std::move(rootPath)), entryLimit(entryLimit), rootFiles(rootFiles),
      completed(this->rootPath) {
    nameRootFiles();
}

bool StorageTraversal::Directory::is(const FolderReader& folder) const {
    const auto metadata = folder.status();
    if (!metadata || metadata->version.device != device)
        return false;
    // Inode numbers alone don't identify a folder: FAT assigns new ones on each read, other file
    // systems reuse them.
    return birth ? metadata->birth == birth : !metadata->birth && metadata->version.inode == inode;
}

StorageTraversal::Opened StorageTraversal::open(const std::filesystem::path& folder,
                                                std::int64_t entryLimit, RootFiles files) {
    return openCanonical(canonicalPath(folder), entryLimit, files);
}

StorageTraversal::Opened StorageTraversal::openItem(const std::filesystem::path& folder,
                                                    std::int64_t entryLimit, RootFiles files) {
    if (canonicalPath(folder.parent_path()) != folder.parent_path())
        return failure(StorageMeasurementFailure::unavailable);
    return openCanonical(folder, entryLimit, files);
}

StorageTraversal::Opened StorageTraversal::openCanonical(const std::filesystem::path& path,
                                                         std::int64_t entryLimit, RootFiles files) {
    auto folder = FolderReader::openRoot(path);
    if (!folder)
        return failure(folder.error());
    StorageTraversal walk(path.native(), entryLimit, files);
    if (const auto ended = walk.enterRoot(*std::move(folder)))
        return failure(ended->error());
    return walk;
}

std::optional<StorageTraversal::Result> StorageTraversal::step() {
    if (stack.empty())
        return failure(StorageMeasurementFailure::unreadable);
    const bool isWalked = !reading && nextEntry == entries.size() && !stack.back().hasPending();
    if (isWalked)
        return leave();
    if (!isAtTop())
        if (auto ended = returnToTop())
            return ended;
    if (reading && nextEntry == entries.size())
        readEntries();
    if (nextEntry < entries.size())
        return visitNext();
    if (reading)
        return std::nullopt;
    return stack.back().hasPending() ? enterNext() : leave();
}

void StorageTraversal::rest(const std::stop_token& stop) {
    // As many names as the limit still allows, and one more, which ends the walk when it is
    // visited.
    const auto most = std::max<std::int64_t>(entryLimit - visited, 0) + 1;
    for (std::int64_t read = 0; reading && read < most; read += readAhead) {
        if (read >= readAfterStop && stop.stop_requested()) {
            stack.back().forgetIdentity();
            break;
        }
        readNames(std::min(most - read, readAhead));
    }
    sortEntries();
    reading = false;
    here = {};
    above = {};
}

std::optional<StorageTraversal::Result> StorageTraversal::enterRoot(FolderReader folder) {
    if (!isValidUtf8(rootPath))
        return failure(StorageMeasurementFailure::unreadable);
    std::string_view name = lastPathComponent(rootPath);
    if (name == "/")
        name = {};
    return enter(std::move(folder), std::string(name));
}

std::optional<StorageTraversal::Result> StorageTraversal::enterNext() {
    if (!countEntry())
        return failure(StorageMeasurementFailure::entryLimit);
    Directory& parent = stack.back();
    std::string name(parent.pending.c_str() + parent.pendingStart);
    parent.pendingStart += name.size() + 1;
    auto folder = FolderReader::open(here.descriptor(), name.c_str());
    if (folder)
        return enter(*std::move(folder), std::move(name));
    // Something else may have the name of the folder by now.
    if (folder.error() == ENOTDIR || folder.error() == ELOOP)
        add(name.c_str(), here.status(name.c_str()));
    else if (folder.error() != ENOENT)
        readFailed = true;
    return std::nullopt;
}

std::optional<StorageTraversal::Result> StorageTraversal::enter(FolderReader folder,
                                                                std::string name) {
    if (!isValidUtf8(name))
        return failure(StorageMeasurementFailure::unreadable);
    const auto metadata = folder.status();
    if (!metadata || isCycle(*metadata)) {
        readFailed = true;
        return std::nullopt;
    }
    if (metadata->isCloudOnly)
        return failure(StorageMeasurementFailure::cloudBacked);

    const auto index =
        stack.empty() ? CompletedFolders::noFolder : completed.enter(stack.back().index, name);
    above = std::exchange(here, std::move(folder));
    hereLevel = stack.size();
    reading = true;
    stack.push_back({.name = std::move(name),
                     .device = metadata->version.device,
                     .inode = metadata->version.inode,
                     .birth = metadata->birth,
                     .index = index,
                     .totals = {},
                     .pending = {}});
    return std::nullopt;
}

bool StorageTraversal::isCycle(const StorageFileMetadata& folder) const {
    // As links are not followed, only a folder that is mounted below itself can occur twice.
    return std::ranges::any_of(stack, [&](const Directory& open) { return open.is(folder); });
}

void StorageTraversal::readEntries() {
    forgetEntries();
    readNames(readAhead);
    sortEntries();
}

void StorageTraversal::readNames(std::int64_t most) {
    for (; most > 0; --most) {
        const dirent* entry = here.next();
        if (!entry) {
            readFailed = readFailed || here.readError() != 0;
            reading = false;
            break;
        }
        if (entry->d_type == DT_DIR) {
            stack.back().addPending(entry->d_name);
            continue;
        }
        entries.push_back({entry->d_ino, entryNames.size()});
        entryNames.append(entry->d_name, std::strlen(entry->d_name) + 1);
    }
}

void StorageTraversal::sortEntries() {
    std::ranges::sort(entries.begin() + static_cast<std::ptrdiff_t>(nextEntry), entries.end(), {},
                      &Entry::inode);
}

void StorageTraversal::forgetEntries() {
    entries.clear();
    entryNames.clear();
    nextEntry = 0;
}

std::optional<StorageTraversal::Result> StorageTraversal::visitNext() {
    const char* name = entryNames.c_str() + entries[nextEntry++].nameStart;
    const auto status = here.status(name);
    // Not every file system lists the types of entries, so only now some are found to be folders. A
    // folder is counted when it is entered.
    const bool isFolder = status && status->isDirectory();
    if (!isFolder && !countEntry())
        return failure(StorageMeasurementFailure::entryLimit);
    add(name, status);
    return std::nullopt;
}

void StorageTraversal::add(const char* name, const Status& status) {
    if (!status)
        readFailed = readFailed || status.error() != ENOENT;
    else if (status->isDirectory())
        stack.back().addPending(name);
    else if (status->isRegularFile())
        addFile(name, *status);
}

void StorageTraversal::addFile(const char* name, const StorageFileMetadata& metadata) {
    stack.back().totals.addFile(metadata.bytes(), metadata.allocatedBytes());
    if (directFileSizes && stack.size() == 1 && isValidUtf8(name))
        directFileSizes->insert_or_assign(name, metadata.bytes());
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
        here = std::exchange(above, {});
        --hereLevel;
    }
    return std::nullopt;
}

/// Opens the top of the stack. If it is no longer at its path, opens the nearest folder above that
/// still is, and makes that the top.
std::optional<StorageTraversal::Result> StorageTraversal::returnToTop() {
    above = {};
    if (here && climb())
        return std::nullopt;
    return descend();
}

bool StorageTraversal::climb() {
    while (hereLevel + 1 > stack.size()) {
        auto parent = FolderReader::open(here.descriptor(), "..");
        // A folder that was moved in the meantime has another parent.
        if (!parent || !stack[hereLevel - 1].is(*parent))
            return false;
        here = *std::move(parent);
        --hereLevel;
    }
    return true;
}

std::optional<StorageTraversal::Result> StorageTraversal::descend() {
    // A folder in the path may have been replaced by a link.
    if (canonicalPath(rootPath).native() != rootPath)
        return failure(StorageMeasurementFailure::unavailable);
    auto root = FolderReader::openRoot(rootPath);
    if (!root)
        return failure(root.error());
    if (!stack.front().is(*root))
        return startOver(*std::move(root));
    here = *std::move(root);
    for (std::size_t level = 1; level < stack.size(); ++level) {
        auto folder = FolderReader::open(here.descriptor(), stack[level].name.c_str());
        if (folder && stack[level].is(*folder))
            here = *std::move(folder);
        else
            leaveOut(level);
    }
    hereLevel = stack.size() - 1;
    return std::nullopt;
}

/// Removes the folder at `level` and everything below it from the sums, and queues its name to be
/// visited again.
void StorageTraversal::leaveOut(std::size_t level) {
    completed.remove(stack[level].index);
    stack[level - 1].addPending(stack[level].name);
    stack.erase(stack.begin() + static_cast<std::ptrdiff_t>(level), stack.end());
    forgetEntries();
}

/// Begins to record the sizes of the files in the root by name, if the result is to have them.
void StorageTraversal::nameRootFiles() {
    directFileSizes.reset();
    if (rootFiles == RootFiles::named)
        directFileSizes.emplace();
}

/// Restarts the walk, because another folder is at the path of the root.
std::optional<StorageTraversal::Result> StorageTraversal::startOver(FolderReader root) {
    stack.clear();
    forgetEntries();
    completed = CompletedFolders(rootPath);
    rootBreakdown.clear();
    nameRootFiles();
    readFailed = false;
    here = {};
    if (auto ended = enterRoot(std::move(root)))
        return ended;
    if (stack.empty())
        return failure(StorageMeasurementFailure::unreadable);
    return std::nullopt;
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
