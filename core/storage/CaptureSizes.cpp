#include "core/storage/CaptureSizes.h"

#include <ranges>

namespace tidemark {

void CaptureSizes::clear() {
    *this = {};
}

void CaptureSizes::add(const std::string& path, FolderSize size) {
    if (const auto known = sizes.find(path); known != sizes.end()) {
        known->second = std::move(size);
    } else if (room() > 0) {
        sizes.emplace(path, std::move(size));
        ++held;
    }
}

void CaptureSizes::add(CompletedFolders folders) {
    folders.keepFirst(room());
    if (folders.size() == 0)
        return;
    held += folders.size();
    walks.push_back(std::move(folders));
}

std::optional<FolderSize> CaptureSizes::find(const std::string& path) const {
    if (const auto known = sizes.find(path); known != sizes.end())
        return known->second;
    for (const CompletedFolders& walk : walks | std::views::reverse)
        if (auto size = walk.find(path))
            return size;
    return std::nullopt;
}

} // namespace tidemark
