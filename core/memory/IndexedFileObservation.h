#pragma once

#include "core/records/MemoryRecord.h"

#include <vector>

namespace tidemark {

/// What an index of files tells of one file. Never stored.
struct IndexedFileObservation {
    std::string path;
    std::optional<Date> used;
    std::optional<Date> modified;
    std::optional<Date> created;
    /// When the file came to its folder.
    std::optional<Date> added;
    /// Where it was downloaded from.
    std::vector<std::string> origins;
    std::optional<std::int64_t> bytes;

    /// One record for each of its dates from `after` to `observedAt`, both included: last used,
    /// modified, created, and, for a file that came from the web, downloaded. Dates that are not
    /// finite count as absent.
    std::vector<MemoryRecord> records(Date after, Date observedAt) const;

    bool operator==(const IndexedFileObservation&) const = default;
};

} // namespace tidemark
