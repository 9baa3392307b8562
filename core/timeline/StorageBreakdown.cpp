#include "core/timeline/StorageBreakdown.h"

#include "core/timeline/MapUnion.h"

#include <algorithm>

namespace tidemark {

namespace {

bool partsUnknown(const FolderSize& folder) {
    return folder.breakdown->empty() && folder.bytes != 0;
}

bool larger(const StorageContribution& a, const StorageContribution& b) {
    const std::int64_t left = distanceBetween(a.after, a.before);
    const std::int64_t right = distanceBetween(b.after, b.before);
    return left != right ? left > right : a.name < b.name;
}

} // namespace

bool StorageBreakdown::available(const FolderSize& before, const FolderSize& after) {
    return !partsUnknown(before) && !partsUnknown(after);
}

StorageBreakdown::StorageBreakdown(const FolderSize& before, const FolderSize& after,
                                   std::int64_t limit) {
    if (!available(before, after))
        return;
    isAvailable = true;
    forEachInUnion(*before.breakdown, *after.breakdown,
                   [&](const std::string& name, const std::int64_t* was, const std::int64_t* is) {
                       const StorageContribution part{name, was ? *was : 0, is ? *is : 0};
                       if (part.before != part.after)
                           contributions.push_back(part);
                   });
    std::ranges::sort(contributions, larger);
    const auto kept = static_cast<std::size_t>(std::max<std::int64_t>(limit, 0));
    if (contributions.size() > kept)
        contributions.erase(contributions.begin() + static_cast<std::ptrdiff_t>(kept),
                            contributions.end());
    otherDelta = saturatingDifference(after.bytes, before.bytes);
    for (const auto& part : contributions)
        otherDelta = saturatingDifference(otherDelta, part.delta());
}

} // namespace tidemark
