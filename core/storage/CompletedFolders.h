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

/// The sums of one folder, in bytes.
struct FolderTotals {
    std::int64_t bytes = 0;
    std::int64_t allocatedBytes = 0;
    /// The part of `bytes` that lies directly in the folder; absent when it holds no file.
    std::optional<std::int64_t> ownFileBytes;

    void addFile(std::int64_t fileBytes, std::int64_t fileAllocatedBytes);
    void addFolder(const FolderTotals& folder);
};

/// The finished subfolders of one walk. A `FolderSize` each would hold every path twice and cost
/// megabytes where trees are deep: a folder is kept here by its own name and its parent, and the
/// full record is put together for the few that are asked for.
class CompletedFolders {
public:
    using Index = std::uint32_t;
    static constexpr Index noFolder = std::numeric_limits<Index>::max();
    /// Most folders that are kept; those that end later are left out.
    static constexpr std::size_t limit = 50'000;

    /// `rootPath` is the path of the walk's root, which is no part of the set itself.
    explicit CompletedFolders(std::string rootPath) : root(std::move(rootPath)) {}

    /// Notes a folder that the walk enters. `parent` is `noFolder` below the root. The answer is
    /// `noFolder` when the set is full.
    Index enter(Index parent, std::string_view name);
    /// All below the folder has been walked.
    void complete(Index folder, const FolderTotals& totals);

    /// Leaves out the folder that was entered last into its parent, with all below it: it is not
    /// there any more.
    void remove(Index folder);

    /// How many folders are complete, those left out counted.
    std::size_t size() const { return completed; }
    /// Leaves out all but the `count` that were complete first.
    void keepFirst(std::size_t count) { completed = std::min(completed, count); }
    /// The size of the folder at `path`, when it is in the set.
    std::optional<FolderSize> find(std::string_view path) const;

private:
    struct Folder {
        Index parent;
        Index firstChild = noFolder;
        Index nextSibling = noFolder;
        std::uint32_t nameStart;
        std::uint32_t nameLength;
        /// The place in the order of completion.
        Index rank = noFolder;
        FolderTotals totals;
    };

    std::string_view nameOf(const Folder& folder) const;
    Index child(Index parent, std::string_view name) const;
    void sortByName() const;
    FolderSize sizeOf(const Folder& folder, std::string_view path) const;

    std::string root;
    /// A folder whose parent is in the set is only ever complete after all of its children.
    std::vector<Folder> folders;
    std::string names;
    /// The folders of a lower rank are the ones in the set.
    std::size_t completed = 0;
    /// All indices by parent and name, made when something is looked for.
    mutable std::vector<Index> byName;
};

} // namespace tidemark
