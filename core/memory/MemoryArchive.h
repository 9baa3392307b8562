#pragma once

#include "core/base/Shared.h"
#include "core/records/MemoryRecord.h"

#include <vector>

namespace tidemark {

/// The whole memory history as one value, and every rule of what stays in it. Records are shared,
/// so that copying an archive copies no clip.
struct MemoryArchive {
    static constexpr std::int64_t supportedVersion = 1;

    static constexpr std::size_t clipLimit = 200;
    /// Of all clips together: payloads, and texts as UTF-8.
    static constexpr std::size_t clipByteLimit = 20'000'000;
    /// Of all records that are no clips.
    static constexpr std::size_t otherLimit = 10'000;
    /// Seconds that those are kept.
    static constexpr double otherAge = 30 * 86'400.0;

    std::int64_t version = supportedVersion;
    /// Newest first after `prune`.
    std::vector<Shared<MemoryRecord>> records;
    /// Files from before the history began have been offered; that happens once.
    bool fileHistoryStarted = false;

    /// Adds the records, each in place of one with the same id: of that, only `pinned` and
    /// `observedAt` stay. Then prunes, also for no records at all.
    void upsert(std::vector<MemoryRecord> incoming, Date now, std::int64_t clipboardDays);
    /// Drops what is past the limits: the oldest first, and of the clips the unpinned first.
    /// Unpinned clips are kept `clipboardDays` days, at least one.
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
