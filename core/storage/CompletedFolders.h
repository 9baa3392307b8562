#pragma once

#include "core/records/FolderSize.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// The sizes of one folder, in bytes.
struct FolderTotals {
    std::int64_t bytes = 0;
    std::int64_t allocatedBytes = 0;
    /// The size of the files directly in the folder; absent when there are none.
    std::optional<std::int64_t> ownFileBytes;

    void addFile(std::int64_t fileBytes, std::int64_t fileAllocatedBytes);
    void addFolder(const FolderTotals& folder);
};

/// The finished subfolders of one walk, with their sizes. A `FolderSize` for each would hold every
/// path twice and take many megabytes for a deep tree. So this keeps only the name and the parent
/// of each folder, and makes the full record on request.
class CompletedFolders {
public:
    using Index = std::uint32_t;
    static constexpr Index noFolder = std::numeric_limits<Index>::max();
    /// The most folders to keep; those that are finished later are left out.
    static constexpr std::size_t limit = 50'000;

    /// `root` is the path of the walk's root, which is not in the set itself.
    explicit CompletedFolders(std::string root) : root(std::move(root)) {}

    /// Adds a folder that the walk enters. `parent` is `noFolder` for a child of the root. Returns
    /// `noFolder` when the set is full.
    Index enter(Index parent, std::string_view name);
    /// Marks the folder as finished: everything below it has been walked.
    void complete(Index folder, const FolderTotals& totals);

    /// Removes the folder that was entered last in its parent, with everything below it, because it
    /// is not on disk any more.
    void remove(Index folder);

    /// The number of finished folders, including removed ones.
    std::size_t size() const { return completed; }
    /// Keeps only the `count` folders that were finished first.
    void keepFirst(std::size_t count) { completed = std::min(completed, count); }
    /// The size of the folder at `path`; absent when it is not in the set.
    std::optional<FolderSize> find(std::string_view path) const;

private:
    struct Folder {
        Index parent;
        Index firstChild = noFolder;
        Index nextSibling = noFolder;
        std::uint32_t nameStart;
        std::uint32_t nameLength;
        /// Position in the order of completion.
        Index rank = noFolder;
        FolderTotals totals;
    };

    std::string_view nameOf(const Folder& folder) const;
    Index child(Index parent, std::string_view name) const;
    void sortByName() const;
    FolderSize sizeOf(const Folder& folder, std::string_view path) const;

    std::string root;
    /// In the order of `enter`. Children are always completed before their parent.
    std::vector<Folder> folders;
    std::string names;
    /// Number of finished folders in the set: those with a lower `rank`.
    std::size_t completed = 0;
    /// All indices sorted by parent and name. Made by `find`, and again when folders were added.
    mutable std::vector<Index> byName;
};

} // namespace tidemark
