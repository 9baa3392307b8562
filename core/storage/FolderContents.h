#pragma once

#include "core/base/Clock.h"
#include "core/records/StorageMeasurement.h"
#include "core/records/StorageMeasurementFailure.h"

#include <expected>

namespace tidemark {

/// The direct entries of a folder. A storage root is listed in one go and each of its subfolders is
/// measured by itself, because walking the whole tree may take longer than one capture. Sizes are
/// bytes.
struct FolderContents {
    /// The subfolders, in no particular order.
    std::vector<StorageMeasurementItem> subfolders;
    std::int64_t fileBytes = 0;
    std::int64_t fileAllocatedBytes = 0;
    std::map<std::string, std::int64_t> fileSizes;
    /// Number of all entries: files, subfolders, links and others.
    std::int64_t itemCount = 0;
};

/// Lists the folder at the canonical path `folder`. Fails if the folder or an entry can't be read,
/// if there are more than 100,000 entries, after 3 seconds, or on a stop. In a Trash, files of the
/// file manager itself are not counted (`TrashFolder::isFileManagersOwn`).
std::expected<FolderContents, StorageMeasurementFailure>
listContents(const std::filesystem::path& folder, Clock& clock, const std::stop_token& stop);

} // namespace tidemark
