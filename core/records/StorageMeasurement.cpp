#include "core/records/StorageMeasurement.h"

#include "core/base/Arithmetic.h"
#include "core/base/Text.h"

#include <algorithm>

namespace tidemark {

StorageMeasurementItem StorageMeasurementItem::application(const Application& application) {
    return {application.path,    application.name,  application.bundleID,
            application.version, application.build, application.modified};
}

StorageMeasurementItem StorageMeasurementItem::directory(const std::filesystem::path& path,
                                                         std::optional<Date> modified) {
    std::string text = textFromBytes(path.native());
    std::string name(lastPathComponent(text));
    std::string identifier = "directory:" + text;
    return {std::move(text), std::move(name), std::move(identifier), "", "", modified};
}

bool StorageMeasurementRecord::matchesObservedMetadata() const {
    return measuredItem && bytes && !issue && measuredItem->identifier == item->identifier
           && measuredItem->version == item->version && measuredItem->build == item->build
           && measuredItem->modified == item->modified;
}

std::optional<FolderSize> StorageMeasurementRecord::folderSize() const {
    if (!bytes)
        return std::nullopt;
    FolderSize size;
    size.path = item->path;
    size.name = item->name;
    size.bytes = *bytes;
    if (breakdown && breakdownComplete.value_or(true))
        size.breakdown = breakdown.value();
    size.allocatedBytes = allocatedBytes;
    size.rollingMeasurement = false;
    size.measuredAt = measuredAt;
    return size;
}

std::int64_t StorageMeasurementReport::measuredCount() const {
    return std::ranges::count_if(records,
                                 [](const auto& record) { return record->bytes.has_value(); });
}

std::int64_t StorageMeasurementReport::matchingCount() const {
    return std::ranges::count_if(
        records, [](const auto& record) { return record->matchesObservedMetadata(); });
}

std::int64_t StorageMeasurementReport::knownBytes() const {
    std::int64_t sum = 0;
    for (const auto& record : records)
        sum = saturatingSum(sum, record->bytes.value_or(0));
    return sum;
}

} // namespace tidemark
