#pragma once

#include "core/records/StorageMeasurement.h"

namespace tidemark {

/// The known sizes in one storage root at a capture: its own files, measured then, and its child
/// folders, measured at various times. Sizes are bytes.
struct FolderStorageReport {
    std::string path;
    std::string name;
    std::int64_t directFileBytes = 0;
    /// One record per direct subfolder.
    StorageMeasurementReport children;
    Date sampledAt;
    /// Number of direct entries of the root.
    std::optional<std::int64_t> itemCount;
    std::optional<std::int64_t> directAllocatedBytes;
    /// As in `FolderSize`.
    OptionalShared<SizeByName> directFileSizes;

    /// The size of the whole root, for comparison. Absent unless every child folder has a size: a
    /// partial total must never be shown as a size.
    std::optional<FolderSize> folderSize() const;

    bool operator==(const FolderStorageReport&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"path", &FolderStorageReport::path, Private},
            Field{"name", &FolderStorageReport::name, Shown},
            Field{"directFileBytes", &FolderStorageReport::directFileBytes},
            Field{"children", &FolderStorageReport::children},
            Field{"sampledAt", &FolderStorageReport::sampledAt},
            Field{"itemCount", &FolderStorageReport::itemCount},
            Field{"directAllocatedBytes", &FolderStorageReport::directAllocatedBytes},
            Field{"directFileSizes", &FolderStorageReport::directFileSizes, Omitted},
        };
    }
};

} // namespace tidemark
