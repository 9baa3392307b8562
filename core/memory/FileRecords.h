#pragma once

#include "core/base/Shared.h"
#include "core/memory/IndexedFileObservation.h"

#include <span>
#include <string_view>
#include <vector>

namespace tidemark {

/// Makes the records of files that an index of the system has found.
namespace FileRecords {

/// Whether a file at this path is recorded at all. Files of programs have none: hidden files, those
/// in hidden folders, in folders named "Library" and in application bundles, and unfinished
/// downloads.
bool isRecorded(std::string_view path);

/// The records of those files for which `isRecorded` is true, as `IndexedFileObservation::records`
/// makes them.
std::vector<MemoryRecord> of(std::span<const IndexedFileObservation> files, Date after,
                             Date observedAt);

/// The `stored` downloads whose file was opened again according to `found`, with the later
/// `lastOpened`.
std::vector<MemoryRecord> reopenedDownloads(std::span<const Shared<MemoryRecord>> stored,
                                            std::span<const MemoryRecord> found);

} // namespace FileRecords

} // namespace tidemark
