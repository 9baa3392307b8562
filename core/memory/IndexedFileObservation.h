#pragma once

#include "core/records/MemoryRecord.h"

#include <vector>

namespace tidemark {

/// The dates and origins of one file, as an index of files reports them. Not stored itself.
struct IndexedFileObservation {
    std::string path;
    std::optional<Date> used;
    std::optional<Date> modified;
    std::optional<Date> created;
    /// When the file was added to its folder.
    std::optional<Date> added;
    /// URLs that it was downloaded from.
    std::vector<std::string> origins;
    std::optional<std::int64_t> bytes;

    /// One record for each of its dates between `after` and `observedAt`, both included: last used,
    /// modified, created, and, for a file from the web, downloaded. Dates that are not finite count
    /// as absent. Of the origin, only what `webOrigin` returns is kept.
    std::vector<MemoryRecord> records(Date after, Date observedAt) const;

    bool operator==(const IndexedFileObservation&) const = default;
};

} // namespace tidemark
