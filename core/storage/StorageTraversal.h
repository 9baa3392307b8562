#pragma once

#include "core/records/StorageMeasurementFailure.h"
#include "core/storage/CompletedFolders.h"

#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include <dirent.h>

namespace tidemark {

/// A walk of one folder tree that can rest after any step and go on later, for days if need be. It
/// adds up logical and allocated bytes per folder and ends with the size of the root.
///
/// Links are not followed; other file systems mounted below are entered. A file with several names
/// counts at each of them. What can't be read below the root does not stop the walk, but keeps it
/// from ending in a size. What changes on disk between two steps is taken as it is found.
///
/// Folders are gone down into by descriptor, so no path is ever too long, and a folder that turns
/// into a link is not followed. At most two descriptors are open, however deep the tree. Not for
/// several threads at once.
class StorageTraversal {
public:
    using Result = std::expected<FolderSize, StorageMeasurementFailure>;

    /// A walk of the folder that `folder` is, or that it links to. At most `entryLimit` entries
    /// below the root are visited. Absent when there is no folder.
    static std::optional<StorageTraversal> open(const std::filesystem::path& folder,
                                                std::int64_t entryLimit);

    /// Handles one entry. Absent means: go on. A result, good or bad, ends the walk.
    std::optional<Result> step();

    /// Entries visited so far, the root not counted.
    std::int64_t count() const { return visited; }
    /// The finished subfolders.
    const CompletedFolders& completedSizes() const { return completed; }
    /// Gives them away, once the walk has ended.
    CompletedFolders takeCompletedSizes() { return std::move(completed); }

private:
    struct StreamCloser {
        void operator()(DIR* stream) const { ::closedir(stream); }
    };
    using Stream = std::unique_ptr<DIR, StreamCloser>;

    /// A folder that was entered and not yet left.
    struct Directory {
        std::string name;
        dev_t device;
        ino_t inode;
        CompletedFolders::Index index = CompletedFolders::noFolder;
        FolderTotals totals;
        /// Names of subfolders that are still to be entered, each ended by a zero byte.
        std::string pending;
        std::size_t pendingStart = 0;

        bool hasPending() const { return pendingStart < pending.size(); }
    };
    struct Entry {
        ino_t inode;
        std::size_t nameStart;
    };

    StorageTraversal(std::string path, std::int64_t limit);

    std::optional<Result> enterRoot();
    std::optional<Result> enterNext();
    std::optional<Result> enter(int parent, const char* path, std::string name);
    std::optional<Result> visitNext();
    std::optional<Result> leave();
    Result rootResult(const Directory& root);
    void addFile(const char* name, std::int64_t bytes, std::int64_t allocatedBytes);
    void readEntries();
    void endReading();
    bool climb();
    bool isCycle(dev_t device, ino_t inode) const;
    bool countEntry() { return ++visited <= entryLimit; }

    std::string rootPath;
    std::int64_t entryLimit;
    std::int64_t visited = 0;
    bool readFailed = false;
    bool started = false;

    /// The open folders, root first.
    std::vector<Directory> stack;
    /// The descriptor of the folder that was entered last and is not left by its descriptor yet:
    /// the top of the stack, or a folder that lay below it.
    Stream here;
    /// The place of `here` in the stack.
    std::size_t hereLevel = 0;
    /// The parent of `here`, when it is open.
    Stream above;
    bool reading = false;
    /// Whether `here` had a name in the file system when it was entered.
    bool hereWasLinked = false;

    /// The entries of `here` that have been read and not visited yet, in the order of their
    /// inodes, which is that of their place on disk.
    std::vector<Entry> entries;
    std::size_t nextEntry = 0;
    std::string entryNames;

    std::map<std::string, std::int64_t> directFileSizes;
    std::map<std::string, std::int64_t> rootBreakdown;
    CompletedFolders completed;
};

} // namespace tidemark
