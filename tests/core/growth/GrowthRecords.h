#pragma once

#include "core/base/Calendar.h"
#include "core/growth/GrowthSource.h"
#include "tests/support/Observations.h"
#include "tests/support/SharedRecords.h"

#include <string>
#include <utility>
#include <vector>

/// Short builders of captures with sizes. Times are seconds since 2001-01-01T00:00:00Z, which is
/// the start of a day in UTC.
namespace tidemark::test {

inline constexpr double hour = 3'600;
inline constexpr double day = 24 * hour;
inline const Calendar utc("UTC");
inline constexpr std::int64_t gigabyte = 1'000'000'000;
inline constexpr const char* downloads = "/home/Downloads";

/// The report of a folder whose size was added up from its children, which are given by name.
inline FolderStorageReport report(const std::string& path, Date at,
                                  const std::map<std::string, std::int64_t>& children) {
    FolderStorageReport made;
    made.path = path;
    made.name = path.substr(path.rfind('/') + 1);
    made.sampledAt = made.children.observedAt = at;
    for (const auto& [name, bytes] : children) {
        StorageMeasurementRecord record;
        record.item = Shared(
            StorageMeasurementItem::directory((std::filesystem::path(path) / name).native(), {}));
        record.bytes = bytes;
        record.measuredAt = at;
        made.children.records.emplace_back(std::move(record));
    }
    return made;
}

/// A capture of the volume "disk" at `time`, with an expected capture interval of half an hour.
inline Snapshot
sized(double time, std::int64_t free,
      const std::map<std::string, std::map<std::string, std::int64_t>>& folders = {}) {
    Snapshot made = snapshot(static_cast<unsigned>(time / 60));
    made.id = Uuid::random();
    made.timestamp = Date{time};
    made.expectedCaptureInterval = hour / 2;
    made.freeBytes = free;
    made.volumeID = "disk";
    auto& volume = made.volumeContext.emplace();
    volume.name = "Data";
    volume.capacity = 500 * gigabyte;
    made.folderStorage.emplace();
    for (const auto& [path, children] : folders) {
        made.folderStorage->push_back(report(path, made.timestamp, children));
        if (auto size = made.folderStorage->back().folderSize())
            made.folders.emplace_back(*std::move(size));
    }
    return made;
}

inline GrowthSource source(std::vector<Snapshot> snapshots, StorageHistory history = {}) {
    Journal journal;
    journal.snapshots = shared(std::move(snapshots));
    return {Shared(std::move(journal)), Shared(std::move(history))};
}

/// Daily sizes of free space or, with a path, of a folder, from day `first` on, at noon.
inline StorageSeries series(const std::string& path, int first, std::vector<std::int64_t> bytes) {
    StorageSeries made;
    made.kind = path.empty() ? StorageSubjectKind::freeSpace : StorageSubjectKind::folder;
    made.path = path;
    made.name = path.substr(path.rfind('/') + 1);
    made.volumeID = "disk";
    if (!path.empty())
        made.rollingMeasurement = true;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        made.measuredAt.push_back(Date{(first + static_cast<int>(i)) * day + 12 * hour});
    made.bytes = std::move(bytes);
    return made;
}

} // namespace tidemark::test
