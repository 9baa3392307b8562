#include "core/storage/CompletedFolders.h"

#include "core/base/Arithmetic.h"
#include "core/base/Text.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tidemark {

void FolderTotals::addFile(std::int64_t fileBytes, std::int64_t fileAllocatedBytes) {
    bytes = saturatingSum(bytes, fileBytes);
    allocatedBytes = saturatingSum(allocatedBytes, fileAllocatedBytes);
    ownFileBytes = saturatingSum(ownFileBytes.value_or(0), fileBytes);
}

void FolderTotals::addFolder(const FolderTotals& folder) {
    bytes = saturatingSum(bytes, folder.bytes);
    allocatedBytes = saturatingSum(allocatedBytes, folder.allocatedBytes);
}

CompletedFolders::Index CompletedFolders::enter(Index parent, std::string_view name) {
    if (completed >= limit)
        return noFolder;
    const auto index = static_cast<Index>(folders.size());
    Folder folder{.parent = parent,
                  .nameStart = static_cast<std::uint32_t>(names.size()),
                  .nameLength = static_cast<std::uint32_t>(name.size()),
                  .totals = {}};
    names += name;
    if (parent != noFolder)
        folder.nextSibling = std::exchange(folders[parent].firstChild, index);
    folders.push_back(folder);
    return index;
}

void CompletedFolders::complete(Index folder, const FolderTotals& totals) {
    if (folder == noFolder || completed >= limit)
        return;
    folders[folder].totals = totals;
    folders[folder].rank = static_cast<Index>(completed++);
}

void CompletedFolders::remove(Index index) {
    if (index == noFolder)
        return;
    Folder& folder = folders[index];
    if (folder.parent != noFolder)
        folders[folder.parent].firstChild = folder.nextSibling;
    // Making the folder its own parent unlinks it: no path from the root leads to it.
    folder.parent = index;
}

std::optional<FolderSize> CompletedFolders::find(std::string_view path) const {
    const std::string_view top = root == "/" ? std::string_view() : std::string_view(root);
    if (!isBelow(path, top))
        return std::nullopt;
    sortByName();
    Index found = noFolder;
    for (std::size_t start = top.size() + 1; start <= path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        found = child(found, path.substr(start, end - start));
        if (found == noFolder)
            return std::nullopt;
        start = end + 1;
    }
    if (found == noFolder || folders[found].rank >= completed)
        return std::nullopt;
    return sizeOf(folders[found], path);
}

std::string_view CompletedFolders::nameOf(const Folder& folder) const {
    return std::string_view(names).substr(folder.nameStart, folder.nameLength);
}

CompletedFolders::Index CompletedFolders::child(Index parent, std::string_view name) const {
    const auto key = [this](Index index) {
        return std::pair(folders[index].parent, nameOf(folders[index]));
    };
    const auto wanted = std::pair(parent, name);
    const auto place = std::ranges::lower_bound(byName, wanted, {}, key);
    return place != byName.end() && key(*place) == wanted ? *place : noFolder;
}

void CompletedFolders::sortByName() const {
    if (byName.size() == folders.size())
        return;
    byName.resize(folders.size());
    std::iota(byName.begin(), byName.end(), Index{0});
    std::ranges::sort(byName, {}, [this](Index index) {
        return std::pair(folders[index].parent, nameOf(folders[index]));
    });
}

FolderSize CompletedFolders::sizeOf(const Folder& folder, std::string_view path) const {
    FolderSize size;
    size.path = path;
    size.name = nameOf(folder);
    size.bytes = folder.totals.bytes;
    size.allocatedBytes = folder.totals.allocatedBytes;
    size.rollingMeasurement = false;
    SizeByName parts;
    for (Index part = folder.firstChild; part != noFolder; part = folders[part].nextSibling)
        parts[std::string(nameOf(folders[part]))] = folders[part].totals.bytes;
    if (folder.totals.ownFileBytes) {
        auto& own = parts[std::string(FolderSize::filesInFolder)];
        own = saturatingSum(own, *folder.totals.ownFileBytes);
    }
    size.breakdown.emplace(std::move(parts));
    return size;
}

} // namespace tidemark
