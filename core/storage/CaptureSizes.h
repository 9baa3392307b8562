#pragma once

#include "core/storage/CompletedFolders.h"

#include <unordered_map>

namespace tidemark {

/// The folder sizes found in one capture. Monitored folders are often inside each other; with this,
/// a folder that was measured as part of another one is not walked again.
class CaptureSizes {
public:
    /// The most sizes to keep.
    static constexpr std::size_t limit = 50'000;

    void clear();
    /// Keeps the size of the folder at `path`, replacing an earlier one. When there are `limit`
    /// sizes, no further one is added.
    void add(const std::string& path, FolderSize size);
    /// Keeps the subfolders that a walk finished, up to `limit` sizes in all.
    void add(CompletedFolders folders);
    std::optional<FolderSize> find(const std::string& path) const;

private:
    std::size_t room() const { return limit - std::min(limit, held); }

    std::unordered_map<std::string, FolderSize> sizes;
    /// The folders of each walk, in the order of the walks.
    std::vector<CompletedFolders> walks;
    std::size_t held = 0;
};

} // namespace tidemark
