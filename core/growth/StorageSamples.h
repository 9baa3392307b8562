#pragma once

#include "core/growth/StorageSubject.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// One known size of one subject.
struct StorageSample {
    /// When it was measured.
    Date at;
    std::int64_t bytes = 0;
    /// See `StorageSeries`. These texts belong to the source, which must outlive the sample.
    std::string_view volumeID;
    std::string_view volumeName;
    bool isRolling = false;
    /// The snapshot that has the size, and for a folder its record there; null for the size of a
    /// day. Both belong to the source.
    const Snapshot* snapshot = nullptr;
    const FolderSize* folder = nullptr;
    /// The place of the snapshot among all, in order of time. Where several snapshots one after the
    /// other repeat one measurement, there is one sample, of the last of them.
    std::size_t order = 0;

    /// Whether the sizes can be compared: measured in the same way, and not of different volumes.
    /// Free space can only be compared where both volumes are known.
    bool isComparable(const StorageSample& other, StorageSubjectKind kind) const;
};

/// The sizes of one subject, in order of time: those of the kept snapshots, and those of the days
/// before and after them. A child of a folder has only sizes of days.
std::vector<StorageSample> storageSamples(const GrowthSource& source,
                                          const StorageSubject& subject);

/// The sizes of every folder by its path.
std::map<std::string, std::vector<StorageSample>, std::less<>>
folderSamples(const GrowthSource& source);

} // namespace tidemark
