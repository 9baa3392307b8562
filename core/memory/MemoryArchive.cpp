#include "core/memory/MemoryArchive.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace tidemark {

namespace {

using Records = std::vector<Shared<MemoryRecord>>;

/// Stable, so that sorting an unchanged archive again does not reorder records of the same time.
/// Most of the records are sorted already, in one or two runs.
void sortNewestFirst(Records& records) {
    const auto isNewer = [](const auto& a, const auto& b) { return a->timestamp > b->timestamp; };
    const auto rest = std::is_sorted_until(records.begin(), records.end(), isNewer);
    if (!std::is_sorted(rest, records.end(), isNewer))
        std::stable_sort(rest, records.end(), isNewer);
    std::inplace_merge(records.begin(), rest, records.end(), isNewer);
}

std::size_t clipSize(const MemoryRecord& clip) {
    return (clip.payload ? clip.payload->bytes.size() : 0) + (clip.text ? clip.text->size() : 0);
}

/// The remaining room within the limits, used up record by record.
class RemainingRoom {
public:
    RemainingRoom(Date now, std::int64_t clipboardDays)
        : oldestClip(now
                     + -86'400.0 * static_cast<double>(std::max<std::int64_t>(clipboardDays, 1))),
          oldestOther(now + -MemoryArchive::otherAge) {}

    bool take(const MemoryRecord& record) {
        return record.kind == MemoryRecord::Kind::clipboard ? takeClip(record) : takeOther(record);
    }

private:
    bool takeClip(const MemoryRecord& clip) {
        const std::size_t size = clipSize(clip);
        if (clips == MemoryArchive::clipLimit || size > MemoryArchive::clipByteLimit - clipBytes)
            return false;
        if (!clip.pinned && clip.timestamp < oldestClip)
            return false;
        ++clips;
        clipBytes += size;
        return true;
    }
    bool takeOther(const MemoryRecord& record) {
        if (others == MemoryArchive::otherLimit || record.timestamp < oldestOther)
            return false;
        ++others;
        return true;
    }

    const Date oldestClip;
    const Date oldestOther;
    std::size_t clips = 0;
    std::size_t clipBytes = 0;
    std::size_t others = 0;
};

/// For up to so many records, a linear search for each is quicker than building a table.
constexpr std::size_t fewRecords = 4;

/// `next`, with `pinned` and `observedAt` of the record that it replaces.
MemoryRecord inPlaceOf(const MemoryRecord& stored, MemoryRecord next) {
    next.pinned = stored.pinned;
    next.observedAt = stored.observedAt;
    return next;
}

void put(Records& records, MemoryRecord next) {
    const auto stored =
        std::ranges::find_if(records, [&](const auto& record) { return record->id == next.id; });
    if (stored == records.end()) {
        records.emplace_back(std::move(next));
        return;
    }
    next = inPlaceOf(**stored, std::move(next));
    if (next != **stored)
        *stored = Shared(std::move(next));
}

/// Records by id, in the order in which each id was first added.
class RecordTable {
public:
    explicit RecordTable(Records stored) {
        records.reserve(stored.size());
        places.reserve(stored.size());
        for (auto& record : stored)
            if (places.try_emplace(record->id, records.size()).second)
                records.push_back(std::move(record));
            else
                replaced.push_back(std::move(record));
    }

    void put(MemoryRecord next) {
        const auto place = places.find(next.id);
        if (place == places.end()) {
            const auto& added = records.emplace_back(std::move(next));
            places.emplace(added->id, records.size() - 1);
            return;
        }
        auto& stored = records[place->second];
        next = inPlaceOf(*stored, std::move(next));
        if (next != *stored)
            replaced.push_back(std::exchange(stored, Shared(std::move(next))));
    }

    Records take() { return std::move(records); }

private:
    Records records;
    /// The keys point into records, including replaced ones.
    std::unordered_map<std::string_view, std::size_t> places;
    Records replaced;
};

} // namespace

void MemoryArchive::upsert(std::vector<MemoryRecord> incoming, Date now,
                           std::int64_t clipboardDays) {
    if (!incoming.empty() && incoming.size() <= fewRecords) {
        for (auto& record : incoming)
            put(records, std::move(record));
    } else {
        RecordTable table(std::move(records));
        for (auto& record : incoming)
            table.put(std::move(record));
        records = table.take();
    }
    prune(now, clipboardDays);
}

void MemoryArchive::prune(Date now, std::int64_t clipboardDays) {
    sortNewestFirst(records);
    std::ranges::stable_partition(records, [](const auto& record) { return record->pinned; });
    RemainingRoom room(now, clipboardDays);
    Records kept;
    kept.reserve(records.size());
    for (auto& record : records)
        if (room.take(*record))
            kept.push_back(std::move(record));
    sortNewestFirst(kept);
    records = std::move(kept);
}

} // namespace tidemark
