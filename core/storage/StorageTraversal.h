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

/// Walks one folder tree and adds up logical and allocated bytes per folder. Measuring a large tree
/// can take longer than one capture may, so the walk goes step by step and can pause after any
/// step, for seconds or for days, with no file open. The difficulty is that the tree may change
/// during a pause.
///
/// Links are not followed; file systems mounted below are included. A file with several names is
/// counted for each of them. If a part of the tree can't be read, the walk goes on but ends with a
/// failure instead of a size. Each folder counts as it was when its names were read, without
/// entries that were removed before they were visited.
///
/// Folders are opened relative to their parent's descriptor, so no path is too long and a folder
/// that is replaced by a link is not followed. Between two steps at most two descriptors are open,
/// at any depth, and none after `rest`. To continue after a pause, the folders from the root to the
/// current one are opened again by name and compared by device and by time of birth, or by inode
/// where the file system has no time of birth. A folder that is no longer at its path is removed
/// from the sums, and what is there now is walked from its start. Not thread-safe.
class StorageTraversal {
public:
    /// Whether the result has the name and size of each file directly in the root, or only their
    /// sum. With more than `FolderSize::directFileLimit` files, it has only the sum.
    enum class RootFiles { named, summed };

    using Result = std::expected<FolderSize, StorageMeasurementFailure>;
    using Opened = std::expected<StorageTraversal, StorageMeasurementFailure>;

    /// Starts a walk of `folder`, which may be a link to a folder. At most `entryLimit` entries
    /// below the root are visited. The failures are those of `FolderReader::openRoot`.
    static Opened open(const std::filesystem::path& folder, std::int64_t entryLimit,
                       RootFiles files = RootFiles::named);
    /// The same for a folder that was found earlier at a canonical path. The failure is
    /// `unavailable` when the path leads through a link by now.
    static Opened openItem(const std::filesystem::path& folder, std::int64_t entryLimit,
                           RootFiles files = RootFiles::named);

    /// Visits at most one entry. Returns nothing while there is more to do; a result, a size or a
    /// failure, ends the walk.
    std::optional<Result> step();

    /// Closes all descriptors, after reading the remaining names of the current folder. After a
    /// stop request it reads at most about 65,000 of them; a folder with more is walked from its
    /// start later. The next step opens again what it needs.
    void rest(const std::stop_token& stop = {});

    /// Number of entries visited so far, without the root. Entries that had to be visited again
    /// count each time.
    std::int64_t count() const { return visited; }
    /// The finished subfolders.
    const CompletedFolders& completedSizes() const { return completed; }
    /// Moves the finished subfolders out. Call it only after the walk has ended.
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
        /// Names of the subfolders that are still to be entered, each followed by a NUL.
        std::string pending;
        std::size_t pendingStart = 0;

        bool hasPending() const { return pendingStart < pending.size(); }
        void addPending(std::string_view folder) { pending.append(folder).push_back('\0'); }
        bool is(const StorageFileMetadata& metadata) const {
            return metadata.version.inode == inode && metadata.version.device == device;
        }
        bool is(const FolderReader& folder) const;
        /// Makes `is` return false for every folder.
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

    StorageTraversal(std::string rootPath, std::int64_t entryLimit, RootFiles rootFiles);

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

    /// The folders from the root to the current one.
    std::vector<Directory> stack;
    /// The open folder: the one at the top of the stack, or a subfolder of it, at any depth, that
    /// the walk has finished but not closed yet. Empty after `rest`.
    FolderReader here;
    /// The depth of `here`, 0 for the root. If the stack has no such index, `here` is finished.
    std::size_t hereLevel = 0;
    /// The parent of `here`, if it is open.
    FolderReader above;
    /// Whether `here` may have more names to read.
    bool reading = false;

    /// Entries of the top of the stack that have been read but not visited, sorted by inode, which
    /// roughly is their order on disk.
    std::vector<Entry> entries;
    std::size_t nextEntry = 0;
    std::string entryNames;

    std::optional<std::map<std::string, std::int64_t>> directFileSizes;
    std::map<std::string, std::int64_t> rootBreakdown;
    CompletedFolders completed;
};

} // namespace tidemark
