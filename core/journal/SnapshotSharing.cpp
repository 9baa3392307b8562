#include "core/journal/SnapshotSharing.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace tidemark::SnapshotSharing {

namespace {

std::string_view pathOf(const StorageMeasurementRecord& record) {
    return record.item->path;
}
std::string_view pathOf(const auto& record) {
    return record.path;
}

/// Finds the earlier record of a path. Two snapshots mostly hold the same paths in the same order,
/// so the record after the one found last is tried first.
template <class T>
class Earlier {
public:
    explicit Earlier(const std::vector<Shared<T>>& all) : all(all) {}

    const Shared<T>* find(std::string_view path) {
        if (next < all.size() && pathOf(*all[next]) == path)
            return &all[next++];
        if (places.empty())
            for (std::size_t place = 0; place < all.size(); ++place)
                places.emplace(pathOf(*all[place]), place);
        const auto found = places.find(path);
        if (found == places.end())
            return nullptr;
        next = found->second + 1;
        return &all[found->second];
    }

private:
    const std::vector<Shared<T>>& all;
    std::unordered_map<std::string_view, std::size_t> places;
    std::size_t next = 0;
};

/// Replaces `part` by `earlier` where both are equal. True when that changed `part`.
template <class Box>
bool adopt(Box& part, const Box& earlier) {
    if (part.object() == earlier.object() || !(part == earlier))
        return false;
    part = earlier;
    return true;
}

bool adoptParts(FolderSize& size, const FolderSize& earlier) {
    const bool breakdown = adopt(size.breakdown, earlier.breakdown);
    const bool files = adopt(size.directFileSizes, earlier.directFileSizes);
    return breakdown || files;
}

bool adoptParts(StorageMeasurementRecord& record, const StorageMeasurementRecord& earlier) {
    const bool item = adopt(record.item, earlier.item);
    const bool measured = adopt(record.measuredItem, earlier.measuredItem);
    const bool breakdown = adopt(record.breakdown, earlier.breakdown);
    return item || measured || breakdown;
}

/// A record that changes with each capture although parts of it stay equal, such as a measurement.
template <class T>
concept OfParts = requires(T record) { adoptParts(record, record); };

template <class T>
void share(Shared<T>& record, const Shared<T>& earlier) {
    adopt(record, earlier);
}
template <OfParts T>
void share(Shared<T>& record, const Shared<T>& earlier) {
    T sharing = *record;
    const bool changed = adoptParts(sharing, *earlier);
    // Compared after the parts, which are the same objects by now and so are quick to compare.
    if (sharing == *earlier)
        record = earlier;
    else if (changed)
        record.emplace(std::move(sharing));
}

template <class T>
void share(std::vector<Shared<T>>& records, const std::vector<Shared<T>>& earlierRecords) {
    Earlier<T> earlier(earlierRecords);
    for (Shared<T>& record : records)
        if (const Shared<T>* known = earlier.find(pathOf(*record)))
            if (!record.sameObject(*known))
                share(record, *known);
}

template <class T>
void share(Shared<std::vector<Shared<T>>>& list, const Shared<std::vector<Shared<T>>>& earlier) {
    auto records = *list;
    share(records, *earlier);
    if (records == *earlier)
        list = earlier;
    else
        list.emplace(std::move(records));
}

/// Calls `visit(report, earlier)` for each report that has an earlier one with the same `key`.
template <class Report>
void forEachPair(std::optional<std::vector<Report>>& reports,
                 const std::optional<std::vector<Report>>& earlierReports,
                 std::string Report::* key, auto visit) {
    if (!reports || !earlierReports)
        return;
    for (Report& report : *reports)
        if (const auto earlier = std::ranges::find(*earlierReports, report.*key, key);
            earlier != earlierReports->end())
            visit(report, *earlier);
}

void shareFolder(FolderStorageReport& report, const FolderStorageReport& earlier) {
    adopt(report.directFileSizes, earlier.directFileSizes);
    share(report.children.records, earlier.children.records);
}

void shareItems(MetadataReport& report, const MetadataReport& earlier) {
    adopt(report.items, earlier.items);
}

} // namespace

Snapshot sharingWith(const Snapshot& previous, Snapshot snapshot) {
    share(snapshot.applications, previous.applications);
    share(snapshot.backgroundItems, previous.backgroundItems);
    share(snapshot.folders, previous.folders);
    if (snapshot.applicationStorage && previous.applicationStorage)
        share(snapshot.applicationStorage->records, previous.applicationStorage->records);
    forEachPair(snapshot.folderStorage, previous.folderStorage, &FolderStorageReport::path,
                shareFolder);
    forEachPair(snapshot.additionalReports, previous.additionalReports, &MetadataReport::scope,
                shareItems);
    adopt(snapshot.coverage.applicationRoots, previous.coverage.applicationRoots);
    adopt(snapshot.coverage.backgroundRoots, previous.coverage.backgroundRoots);
    adopt(snapshot.coverage.excludedPaths, previous.coverage.excludedPaths);
    return snapshot;
}

} // namespace tidemark::SnapshotSharing
