#pragma once

#include "core/records/StorageMeasurementFailure.h"
#include "core/storage/CompletedFolders.h"
#include "core/storage/FolderReader.h"

#include <expected>
#include <filesystem>
#include <optional>
#include <stop_token>
#include <vector>

namespace tidemark {

/// A walk of one folder tree that can rest after any step and go on later, for days if need be. It
/// adds up logical and allocated bytes per folder and ends with the size of the root.
///
/// Links are not followed; other file systems mounted below are entered. A file with several names
/// counts at each of them. What can't be read below the root does not stop the walk, but keeps it
/// from ending in a size. The tree may change between two steps: each folder counts as it was when
/// its names were read, without the entries that have gone before their turn came.
///
/// Folders are gone down into by descriptor, so no path is ever too long, and a folder that turns
/// into a link is not followed. At most two descriptors are open, however deep the tree, and none
/// after `rest`. The way back leads through the names of the folders, and holds only where device,
/// inode and time of birth are still the same: a folder that is not at its place any more is taken
/// out of the sums, and what stands there now is walked from its start. Not for several threads at
/// once.
class StorageTraversal {
public:
    /// Whether the result names the files that lie directly in the root: of a folder with millions
    /// of them, that takes memory by the hundred megabytes.
    enum class RootFiles { named, summed };

    using Result = std::expected<FolderSize, StorageMeasurementFailure>;
    using Opened = std::expected<StorageTraversal, StorageMeasurementFailure>;

    /// Opens the folder that `folder` is, or that it links to. At most `entryLimit` entries below
    /// the root are visited. The failures are those of `FolderReader::openRoot`.
    static Opened open(const std::filesystem::path& folder, std::int64_t entryLimit,
                       RootFiles files = RootFiles::named);
    /// The same for a folder found before at a canonical path: where by now a link stands at the
    /// path or on the way to it, the failure is `unavailable`.
    static Opened openItem(const std::filesystem::path& folder, std::int64_t entryLimit,
                           RootFiles files = RootFiles::named);

    /// Handles one entry. Absent means: go on. A result, good or bad, ends the walk.
    std::optional<Result> step();

    /// Closes what is open, after reading the names that are left in the folder being read. After a
    /// stop only some are read: a folder with more is walked from its start then. The next step
    /// opens again what it needs.
    void rest(const std::stop_token& stop = {});

    /// Entries visited so far, the root not counted; those of a folder that had to be walked again
    /// count each time.
    std::int64_t count() const { return visited; }
    /// The finished subfolders.
    const CompletedFolders& completedSizes() const { return completed; }
    /// Gives them away, once the walk has ended.
    CompletedFolders takeCompletedSizes() { return std::move(completed); }

private:
    /// A folder that was entered and not yet left.
    struct Directory {
        std::string name;
        dev_t device;
        ino_t inode;
        std::optional<FileTime> birth;
        CompletedFolders::Index index = CompletedFolders::noFolder;
        FolderTotals totals;
        /// Names of subfolders that are still to be entered, each ended by a zero byte.
        std::string pending;
        std::size_t pendingStart = 0;

        bool hasPending() const { return pendingStart < pending.size(); }
        void addPending(std::string_view folder) { pending.append(folder).push_back('\0'); }
        bool is(const StorageFileMetadata& metadata) const {
            return metadata.version.inode == inode && metadata.version.device == device;
        }
        bool is(const FolderReader& folder) const;
        /// No folder is this one any more.
        void forgetIdentity() {
            inode = 0;
            birth.reset();
        }
    };
    struct Entry {
        ino_t inode;
        std::size_t nameStart;
    };
    using Status = std::expected<StorageFileMetadata, int>;

    StorageTraversal(std::string path, std::int64_t limit, RootFiles files);

    static Opened openCanonical(const std::filesystem::path& path, std::int64_t entryLimit,
                                RootFiles files);
    std::optional<Result> enterRoot(FolderReader folder);
    std::optional<Result> enterNext();
    std::optional<Result> enter(FolderReader folder, std::string name);
    std::optional<Result> visitNext();
    std::optional<Result> leave();
    Result rootResult(const Directory& root);
    void add(const char* name, const Status& status);
    void addFile(const char* name, const StorageFileMetadata& metadata);
    void readEntries();
    void readNames(std::int64_t most);
    void sortEntries();
    bool isAtTop() const { return here && hereLevel + 1 == stack.size(); }
    std::optional<Result> returnToTop();
    bool climb();
    std::optional<Result> descend();
    void leaveOut(std::size_t level);
    std::optional<Result> startOver(FolderReader root);
    void forgetEntries();
    void nameRootFiles();
    bool isCycle(const StorageFileMetadata& folder) const;
    bool countEntry() { return ++visited <= entryLimit; }

    std::string rootPath;
    std::int64_t entryLimit;
    RootFiles rootFiles;
    std::int64_t visited = 0;
    bool readFailed = false;

    /// The folders on the way to where the walk stands, root first.
    std::vector<Directory> stack;
    /// The folder that was entered last and is not left by its descriptor yet: the top of the
    /// stack, or a folder that lay below it. Empty after a rest.
    FolderReader here;
    /// The place of `here` in the stack.
    std::size_t hereLevel = 0;
    /// The parent of `here`, when it is open.
    FolderReader above;
    /// Whether `here` may have more names.
    bool reading = false;

    /// The entries of the top of the stack that have been read and not visited yet, in the order of
    /// their inodes, which is that of their place on disk.
    std::vector<Entry> entries;
    std::size_t nextEntry = 0;
    std::string entryNames;

    std::optional<std::map<std::string, std::int64_t>> directFileSizes;
    std::map<std::string, std::int64_t> rootBreakdown;
    CompletedFolders completed;
};

} // namespace tidemark
