#pragma once

#include "core/storage/CompletedFolders.h"

#include <unordered_map>

namespace tidemark {

/// The folder sizes that came to be known in one capture, so that a folder measured as part of
/// another one is not walked again.
class CaptureSizes {
public:
    /// Most sizes that are kept.
    static constexpr std::size_t limit = 50'000;

    void clear();
    /// Keeps a size under its path, in place of an earlier one.
    void add(const std::string& path, FolderSize size);
    /// Keeps the subfolders that a walk passed through, as many as there is room for.
    void add(CompletedFolders folders);
    std::optional<FolderSize> find(const std::string& path) const;

private:
    std::size_t room() const { return limit - std::min(limit, held); }

    std::unordered_map<std::string, FolderSize> sizes;
    /// The latest walk last.
    std::vector<CompletedFolders> walks;
    std::size_t held = 0;
};

} // namespace tidemark
