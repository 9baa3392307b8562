#include "core/records/FolderStorageReport.h"

#include "core/base/Arithmetic.h"

namespace tidemark {

std::optional<FolderSize> FolderStorageReport::folderSize() const {
    if (children.measuredCount() != static_cast<std::int64_t>(children.records.size()))
        return std::nullopt;
    FolderSize size;
    size.path = path;
    size.name = name;
    size.bytes = saturatingSum(directFileBytes, children.knownBytes());
    size.allocatedBytes = directAllocatedBytes;
    SizeByName parts;
    for (const auto& child : children.records) {
        auto& part = parts[child->item->name];
        part = saturatingSum(part, child->bytes.value_or(0));
        if (size.allocatedBytes && child->allocatedBytes)
            size.allocatedBytes = saturatingSum(*size.allocatedBytes, *child->allocatedBytes);
        else
            size.allocatedBytes.reset();
    }
    if (directFileBytes > 0) {
        auto& part = parts[std::string(FolderSize::filesInFolder)];
        part = saturatingSum(part, directFileBytes);
    }
    size.breakdown.emplace(std::move(parts));
    size.directFileSizes = directFileSizes;
    size.itemCount = itemCount;
    size.rollingMeasurement = true;
    size.measuredAt = sampledAt;
    return size;
}

} // namespace tidemark
