#pragma once

#include "core/base/Clock.h"
#include "core/records/StorageMeasurement.h"
#include "core/records/StorageMeasurementFailure.h"

#include <expected>

namespace tidemark {

/// What lies directly in a folder. Sizes are bytes.
struct FolderContents {
    /// The subfolders, in no order.
    std::vector<StorageMeasurementItem> subfolders;
    std::int64_t fileBytes = 0;
    std::int64_t fileAllocatedBytes = 0;
    std::map<std::string, std::int64_t> fileSizes;
    /// All entries: files, subfolders, links and whatever else.
    std::int64_t itemCount = 0;
};

/// Lists the folder at the canonical path `folder`: up to 100,000 entries, for up to 3 seconds,
/// all or nothing. What the file manager keeps in a Trash for itself is not counted
/// (`TrashFolder::isFileManagersOwn`).
std::expected<FolderContents, StorageMeasurementFailure>
listContents(const std::filesystem::path& folder, Clock& clock, const std::stop_token& stop);

} // namespace tidemark
