#include "core/presentation/LatestPresence.h"

#include "core/base/Text.h"

#include <algorithm>

namespace tidemark::LatestPresence {

namespace {

bool isExcluded(std::string_view path, const Coverage& coverage) {
    return coverage.excludedPaths
           && std::ranges::any_of(*coverage.excludedPaths, [&](const std::string& excluded) {
                  return path == excluded || isBelow(path, excluded);
              });
}

State absence(std::string_view path, const std::set<std::string>& roots, const Coverage& coverage) {
    const bool wasRead =
        std::ranges::any_of(roots, [&](const std::string& root) { return isBelow(path, root); })
        && !isExcluded(path, coverage);
    return wasRead ? State::absent : State::unknown;
}

bool holds(const auto& items, std::string_view path) {
    return std::ranges::any_of(items, [&](const auto& item) { return item->path == path; });
}

} // namespace

State ofApplication(std::string_view path, const Snapshot& latest) {
    if (holds(*latest.applications, path))
        return State::present;
    return absence(path, *latest.coverage.applicationRoots, latest.coverage);
}

State ofDefinition(std::string_view path, const Snapshot& latest) {
    if (holds(*latest.backgroundItems, path))
        return State::present;
    return absence(path, *latest.coverage.backgroundRoots, latest.coverage);
}

State ofFolder(std::string_view path, const Snapshot& latest) {
    const bool isReported =
        latest.folderStorage
        && std::ranges::any_of(*latest.folderStorage, [&](const FolderStorageReport& report) {
               return report.path == path;
           });
    return isReported || holds(latest.folders, path) ? State::present : State::unknown;
}

} // namespace tidemark::LatestPresence
