#include "core/timeline/MetadataComparison.h"

#include "core/timeline/MapUnion.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace tidemark::MetadataComparison {

namespace {

using ItemsByPath = std::map<std::string_view, const ObservedMetadata*>;

ItemsByPath byPath(const MetadataReport& report) {
    ItemsByPath items;
    for (const auto& item : *report.items)
        items[item.path] = &item;
    return items;
}

OptionalShared<ObservedMetadata> copyOf(const ObservedMetadata* const* item) {
    return item ? OptionalShared(ObservedMetadata(**item)) : OptionalShared<ObservedMetadata>();
}

void compareReports(const MetadataReport& before, const MetadataReport& after,
                    std::vector<Change>& changes) {
    forEachInUnion(byPath(before), byPath(after),
                   [&](std::string_view, const ObservedMetadata* const* was,
                       const ObservedMetadata* const* is) {
                       if (!was || !is || (*was)->value != (*is)->value)
                           changes.push_back(change::MetadataChanged{{copyOf(was), copyOf(is)}});
                   });
}

} // namespace

std::vector<Change> compare(const std::optional<std::vector<MetadataReport>>& before,
                            const std::optional<std::vector<MetadataReport>>& after) {
    std::vector<Change> changes;
    if (!before || !after)
        return changes;
    for (const auto& report : *after) {
        if (!report.complete)
            continue;
        const auto earlier = std::ranges::find_if(*before, [&](const MetadataReport& candidate) {
            return candidate.scope == report.scope && candidate.complete;
        });
        if (earlier != before->end())
            compareReports(*earlier, report, changes);
    }
    return changes;
}

} // namespace tidemark::MetadataComparison
