#include "core/storage/FolderInspectionNode.h"

#include "core/base/Arithmetic.h"
#include "core/base/Text.h"

#include <algorithm>

namespace tidemark {

namespace {

using Node = FolderInspectionNode;
using Sizes = SizeByName;

constexpr std::string_view childrenUnmeasured = "Some child folders have no completed measurement.";
constexpr std::string_view applicationsOnly =
    "Application bundles only; other files in this folder are not included.";
constexpr std::string_view applicationsPartial =
    "≥ shows the subtotal of measured application bundles. Excluded paths or unmeasured apps "
    "prevent a complete total and overall comparison. Other files are not included.";

std::string below(const std::string& parent, std::string_view name) {
    return parent + (parent.ends_with('/') ? "" : "/") + std::string(name);
}

std::int64_t sumOf(const Sizes& sizes) {
    std::int64_t sum = 0;
    for (const auto& [name, bytes] : sizes)
        sum = saturatingSum(sum, bytes);
    return sum;
}

Node leaf(const std::string& parent, const std::string& name, std::int64_t bytes,
          std::optional<Date> date) {
    Node node;
    node.path = below(parent, name);
    node.name = name;
    node.bytes = bytes;
    node.measuredAt = date;
    return node;
}

Node fileGroup(const std::string& parent, std::int64_t bytes, std::optional<Date> date,
               const OptionalShared<Sizes>& files) {
    using namespace std::string_view_literals;
    Node node = leaf(parent, std::string(FolderSize::filesInFolder), bytes, date);
    node.path = below(parent, "\0direct-files"sv);
    node.isFileGroup = true;
    if (!files)
        return node;
    node.children.emplace();
    for (const auto& [name, fileBytes] : *files)
        node.children->push_back(leaf(parent, name, fileBytes, date));
    node.childrenComplete = true;
    return node;
}

std::vector<Node> partsOf(const Sizes& breakdown, const std::string& parent,
                          std::optional<Date> date, const OptionalShared<Sizes>& files = {}) {
    std::vector<Node> parts;
    for (const auto& [name, bytes] : breakdown)
        parts.push_back(name == FolderSize::filesInFolder ? fileGroup(parent, bytes, date, files)
                                                          : leaf(parent, name, bytes, date));
    return parts;
}

Node nodeOf(const StorageMeasurementRecord& record) {
    Node node;
    node.path = record.item->path;
    node.name = record.item->name;
    node.bytes = record.bytes;
    node.measuredAt = record.measuredAt;
    node.issue = record.issue;
    if (record.breakdown) {
        node.children = partsOf(*record.breakdown, node.path, record.measuredAt);
        node.childrenComplete = record.breakdownComplete.value_or(true);
    }
    return node;
}

bool hasDirectFiles(const FolderStorageReport& report) {
    return report.directFileBytes > 0
           || (report.directFileSizes && !report.directFileSizes->empty());
}

Node nodeOf(const FolderStorageReport& report) {
    Node node;
    node.path = report.path;
    node.name = report.name;
    node.measuredAt = report.sampledAt;
    node.children.emplace();
    for (const auto& record : report.children.records)
        node.children->push_back(nodeOf(*record));
    if (hasDirectFiles(report))
        node.children->push_back(fileGroup(report.path, report.directFileBytes, report.sampledAt,
                                           report.directFileSizes));
    node.childrenComplete = true;
    if (const auto size = report.folderSize()) {
        node.bytes = size->bytes;
    } else {
        node.issue = childrenUnmeasured;
        node.recordedSubtotal = saturatingSum(report.directFileBytes, report.children.knownBytes());
    }
    return node;
}

/// True when everything below `root` was read.
bool isCovered(const std::string& root, const Coverage& coverage) {
    return coverage.applicationRoots->contains(root)
           && (!coverage.excludedPaths
               || std::ranges::none_of(*coverage.excludedPaths, [&](const std::string& path) {
                      return isBelow(path, root);
                  }));
}

Node applicationsBelow(const std::string& root, const StorageMeasurementReport& report,
                       const Coverage& coverage) {
    StorageMeasurementReport taken{.records = {}, .observedAt = report.observedAt};
    std::ranges::copy_if(report.records, std::back_inserter(taken.records),
                         [&](const auto& record) { return isBelow(record->item->path, root); });
    Node node;
    node.path = root;
    node.name = lastPathComponent(root);
    node.measuredAt = report.observedAt;
    node.children.emplace();
    for (const auto& record : taken.records)
        node.children->push_back(nodeOf(*record));
    node.childrenComplete = true;
    const bool complete =
        isCovered(root, coverage) && std::ranges::all_of(taken.records, [](const auto& record) {
            return record->bytes.has_value();
        });
    (complete ? node.bytes : node.recordedSubtotal) = taken.knownBytes();
    node.issue = complete ? applicationsOnly : applicationsPartial;
    return node;
}

} // namespace

FolderInspectionNode FolderInspectionNode::recorded(const FolderSize& size) {
    Sizes breakdown = *size.breakdown;
    if (size.directFileSizes)
        breakdown[std::string(FolderSize::filesInFolder)] = sumOf(*size.directFileSizes);
    Node node;
    node.path = size.path;
    node.name = size.name;
    node.bytes = size.bytes;
    node.measuredAt = size.measuredAt;
    if (!breakdown.empty() || size.bytes == 0) {
        node.children = partsOf(breakdown, size.path, size.measuredAt, size.directFileSizes);
        node.childrenComplete = true;
    }
    return node;
}

FolderInspectionNode FolderInspectionNode::recorded(const std::string& root,
                                                    const Snapshot& snapshot) {
    if (snapshot.folderStorage) {
        const auto report =
            std::ranges::find(*snapshot.folderStorage, root, &FolderStorageReport::path);
        if (report != snapshot.folderStorage->end())
            return nodeOf(*report);
    }
    for (const auto& size : snapshot.folders)
        if (size->path == root)
            return recorded(*size);
    if (snapshot.applicationStorage)
        return applicationsBelow(root, *snapshot.applicationStorage, snapshot.coverage);
    Node node;
    node.path = root;
    node.name = lastPathComponent(root);
    return node;
}

} // namespace tidemark
