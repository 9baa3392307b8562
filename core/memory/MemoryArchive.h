#pragma once

#include "core/base/Shared.h"
#include "core/records/MemoryRecord.h"

#include <vector>

namespace tidemark {

/// The whole memory history as one value, with all rules of what is kept. Records are shared, so
/// that copying an archive does not copy clips.
struct MemoryArchive {
    static constexpr std::int64_t supportedVersion = 1;

    static constexpr std::size_t clipLimit = 200;
    /// The limit for all clips together, in bytes of payloads and of texts as UTF-8.
    static constexpr std::size_t clipByteLimit = 20'000'000;
    /// The limit for the number of all other records.
    static constexpr std::size_t otherLimit = 10'000;
    /// Seconds for which records other than clips are kept.
    static constexpr double otherAge = 30 * 86'400.0;

    std::int64_t version = supportedVersion;
    /// Newest first after `prune`.
    std::vector<Shared<MemoryRecord>> records;
    /// True once the file history has begun. Files from before that are added only once, when it
    /// begins.
    bool fileHistoryStarted = false;

    /// Adds the records. Each replaces a record with the same id, and takes over the `pinned` and
    /// `observedAt` of that one. Then prunes, even when `incoming` is empty.
    void upsert(std::vector<MemoryRecord> incoming, Date now, std::int64_t clipboardDays);
    /// Drops the records beyond the limits: the oldest first, and unpinned clips before pinned
    /// ones. Unpinned clips are kept for `clipboardDays` days, at least one.
    void prune(Date now, std::int64_t clipboardDays);

    bool operator==(const MemoryArchive&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"version", &MemoryArchive::version},
            Field{"records", &MemoryArchive::records},
            Field{"fileHistoryStarted", &MemoryArchive::fileHistoryStarted},
        };
    }
};

} // namespace tidemark
