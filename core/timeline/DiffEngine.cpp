#include "core/timeline/DiffEngine.h"

#include "core/base/Arithmetic.h"
#include "core/base/Text.h"
#include "core/system/TrashFolder.h"
#include "core/timeline/DefinitionComparison.h"
#include "core/timeline/MapUnion.h"
#include "core/timeline/MetadataComparison.h"
#include "core/timeline/StorageBreakdown.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>
#include <unordered_map>

namespace tidemark::DiffEngine {

namespace {

using Roots = std::vector<std::string>;

Roots intersection(const std::set<std::string>& a, const std::set<std::string>& b) {
    Roots common;
    std::ranges::set_intersection(a, b, std::back_inserter(common));
    return common;
}

/// The paths that can be compared: below a root that both observations read, and excluded by
/// neither.
class Scope {
public:
    /// `before` and `after` are the roots that the observations read.
    Scope(const std::set<std::string>& before, const std::set<std::string>& after,
          const Coverage& previous, const Coverage& current)
        : roots(intersection(before, after)) {
        for (const Coverage* coverage : {&previous, &current})
            if (coverage->excludedPaths)
                excluded.insert(coverage->excludedPaths->begin(), coverage->excludedPaths->end());
        excludeRootsOfOneSide(before, after);
    }

    bool contains(std::string_view path) const {
        return std::ranges::any_of(roots, [&](const auto& root) { return isBelow(path, root); })
               && !isExcluded(path);
    }

private:
    /// Inside a common root, excludes each folder that only one of the observations read as a root
    /// of its own: the user began or stopped monitoring them, so their contents were seen only
    /// once.
    void excludeRootsOfOneSide(const std::set<std::string>& before,
                               const std::set<std::string>& after) {
        Roots ofOne;
        std::ranges::set_symmetric_difference(before, after, std::back_inserter(ofOne));
        for (auto& root : ofOne)
            if (std::ranges::any_of(roots, [&](const auto& both) { return isBelow(root, both); }))
                excluded.insert(std::move(root));
    }

    /// Whether the path or a folder above it is excluded. Looks up each of them, so the cost
    /// depends on the depth of the path and not on the number of exclusions.
    bool isExcluded(std::string_view path) const {
        if (excluded.empty())
            return false;
        for (std::size_t end = path.size(); end != std::string_view::npos;) {
            if (excluded.contains(path.substr(0, end)))
                return true;
            end = end == 0 ? std::string_view::npos : path.rfind('/', end - 1);
        }
        return false;
    }

    Roots roots;
    std::set<std::string, std::less<>> excluded;
};

/// For one path, the item of each observation: its first if it has several there, null if it has
/// none.
template <class Item>
struct Pair {
    const Shared<Item>* before = nullptr;
    const Shared<Item>* after = nullptr;
};

/// Calls `visit(before, after)`, in ascending order of the paths, for each path within `scope` that
/// only one observation has (the other argument is null) or whose two items `differ`.
template <class Item, class Differ, class Visit>
void forEachDifference(const std::vector<Shared<Item>>& previous,
                       const std::vector<Shared<Item>>& current, const Scope& scope, Differ differ,
                       Visit visit) {
    std::unordered_map<std::string_view, Pair<Item>> pairs;
    pairs.reserve(std::max(previous.size(), current.size()));
    const auto collect = [&](const std::vector<Shared<Item>>& items,
                             const Shared<Item>* Pair<Item>::* side) {
        for (const auto& item : items) {
            if (!scope.contains(item->path))
                continue;
            auto& slot = pairs[item->path].*side;
            if (!slot)
                slot = &item;
        }
    };
    collect(previous, &Pair<Item>::before);
    collect(current, &Pair<Item>::after);

    // Most items of two observations are equal; only the others are sorted.
    std::vector<std::pair<std::string_view, Pair<Item>>> differences;
    for (const auto& [path, pair] : pairs)
        if (!pair.before || !pair.after
            || (!pair.before->sameObject(*pair.after) && differ(**pair.before, **pair.after)))
            differences.emplace_back(path, pair);
    std::ranges::sort(differences, {}, [](const auto& difference) { return difference.first; });
    for (const auto& [path, pair] : differences)
        visit(pair.before, pair.after);
}

bool applicationsDiffer(const Application& before, const Application& after) {
    return before.bundleID != after.bundleID || before.version != after.version
           || before.build != after.build;
}

void compareApplications(const Snapshot& previous, const Snapshot& current,
                         std::vector<Change>& changes) {
    const Scope scope(*previous.coverage.applicationRoots, *current.coverage.applicationRoots,
                      previous.coverage, current.coverage);
    const auto visit = [&](const Shared<Application>* before, const Shared<Application>* after) {
        if (before && after && (*before)->bundleID == (*after)->bundleID) {
            changes.push_back(change::ApplicationUpdated{{*before, *after}});
            return;
        }
        // If there are both, another application has replaced the one at this path.
        if (before)
            changes.push_back(change::ApplicationRemoved{{*before}});
        if (after)
            changes.push_back(change::ApplicationInstalled{{*after}});
    };
    forEachDifference(*previous.applications, *current.applications, scope, applicationsDiffer,
                      visit);
}

bool definitionsDiffer(const BackgroundItem& before, const BackgroundItem& after) {
    return before.identifier != after.identifier || before.program != after.program
           || !DefinitionComparison::changedKeys(before, after).empty();
}

void compareBackgroundItems(const Snapshot& previous, const Snapshot& current,
                            std::vector<Change>& changes) {
    const Scope scope(*previous.coverage.backgroundRoots, *current.coverage.backgroundRoots,
                      previous.coverage, current.coverage);
    const auto visit = [&](const Shared<BackgroundItem>* before,
                           const Shared<BackgroundItem>* after) {
        if (before && after)
            changes.push_back(change::BackgroundChanged{{*before, *after}});
        else if (before)
            changes.push_back(change::BackgroundRemoved{{*before}});
        else
            changes.push_back(change::BackgroundAdded{{*after}});
    };
    forEachDifference(*previous.backgroundItems, *current.backgroundItems, scope, definitionsDiffer,
                      visit);
}

/// True when the Trash was observed with items and then empty.
bool wasEmptied(const FolderSize& before, const FolderSize& after) {
    return TrashFolder::is(after.path) && after.itemCount == 0 && before.itemCount.value_or(0) > 0;
}

bool isReported(const FolderSize& before, const FolderSize& after) {
    const std::int64_t threshold = TrashFolder::is(after.path) ? trashThreshold : folderThreshold;
    return distanceBetween(after.bytes, before.bytes) >= threshold || wasEmptied(before, after)
           || hasSignificantChildChange(before, after);
}

void compareFolders(const Snapshot& previous, const Snapshot& current,
                    std::vector<Change>& changes) {
    for (const auto& after : current.folders) {
        const auto found = std::ranges::find_if(
            previous.folders, [&](const auto& folder) { return folder->path == after->path; });
        if (found == previous.folders.end())
            continue;
        const Shared<FolderSize>& before = *found;
        // A size that was added up over several captures can't be compared with one measured at
        // once, but the number of items shows whether the Trash was emptied.
        if (before->rollingMeasurement.value_or(false)
            != after->rollingMeasurement.value_or(false)) {
            if (wasEmptied(*before, *after))
                changes.push_back(change::TrashBecameEmpty{after->path, *before->itemCount});
        } else if (isReported(*before, *after)) {
            changes.push_back(change::FolderSizeChanged{{before, after}});
        }
    }
}

/// Compares Trash folders whose contents were counted but not completely measured. There is no size
/// to compare, but it is known whether they were emptied.
void compareTrashReports(const Snapshot& previous, const Snapshot& current,
                         std::vector<Change>& changes) {
    if (!previous.folderStorage || !current.folderStorage)
        return;
    for (const auto& after : *current.folderStorage) {
        if (!TrashFolder::is(after.path) || after.itemCount != 0)
            continue;
        const auto before =
            std::ranges::find(*previous.folderStorage, after.path, &FolderStorageReport::path);
        if (before == previous.folderStorage->end() || before->itemCount.value_or(0) < 1)
            continue;
        const bool isReportedBySize =
            std::ranges::any_of(previous.folders, [&](const auto& folder) {
                return folder->path == after.path && folder->itemCount.value_or(0) > 0;
            });
        if (!isReportedBySize)
            changes.push_back(change::TrashBecameEmpty{after.path, *before->itemCount});
    }
}

void compareFreeSpace(const Snapshot& previous, const Snapshot& current,
                      std::vector<Change>& changes) {
    if (!previous.freeBytes || !current.freeBytes || !previous.volumeID || !current.volumeID
        || *previous.volumeID != *current.volumeID)
        return;
    if (distanceBetween(*current.freeBytes, *previous.freeBytes) >= diskThreshold)
        changes.push_back(change::FreeDiskSpaceChanged{{*previous.freeBytes, *current.freeBytes}});
}

void compareOperatingSystems(const Snapshot& previous, const Snapshot& current,
                             std::vector<Change>& changes) {
    if (previous.operatingSystem && current.operatingSystem
        && current.operatingSystem->differs(*previous.operatingSystem))
        changes.push_back(
            change::OperatingSystemChanged{{*previous.operatingSystem, *current.operatingSystem}});
}

} // namespace

std::vector<Change> compare(const Snapshot& previous, const Snapshot& current) {
    std::vector<Change> changes;
    compareApplications(previous, current, changes);
    compareBackgroundItems(previous, current, changes);
    compareFolders(previous, current, changes);
    compareTrashReports(previous, current, changes);
    compareFreeSpace(previous, current, changes);
    compareOperatingSystems(previous, current, changes);
    std::ranges::move(
        MetadataComparison::compare(previous.additionalReports, current.additionalReports),
        std::back_inserter(changes));
    return changes;
}

bool hasSignificantChildChange(const FolderSize& before, const FolderSize& after) {
    if (TrashFolder::is(after.path) || !StorageBreakdown::available(before, after))
        return false;
    bool significant = false;
    forEachInUnion(*before.breakdown, *after.breakdown,
                   [&](const std::string& name, const std::int64_t* was, const std::int64_t* is) {
                       if (distanceBetween(is ? *is : 0, was ? *was : 0) >= childFolderThreshold
                           && name != FolderSize::filesInFolder)
                           significant = true;
                   });
    return significant;
}

bool isContentsChange(const FolderSize& before, const FolderSize& after) {
    return !TrashFolder::is(after.path)
           && distanceBetween(after.bytes, before.bytes) < folderThreshold
           && hasSignificantChildChange(before, after);
}

} // namespace tidemark::DiffEngine
