#include "core/memory/SaveSeries.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace tidemark::SaveSeries {

namespace {

using Kind = MemoryRecord::Kind;
using Key = std::pair<Kind, std::string_view>;

bool mayRepeat(const MemoryRecord& record) {
    return record.path && (record.kind == Kind::fileModified || record.kind == Kind::fileOpened);
}

bool continues(const MemoryRecord& next, const MemoryRecord& last) {
    // An imported record was observed later than it happened.
    const Date first = std::min(last.timestamp, last.observedAt);
    return last.timestamp <= next.timestamp && next.timestamp - last.timestamp <= mostPause
           && next.timestamp - first <= mostLength;
}

} // namespace

std::vector<MemoryRecord> continued(std::span<const Shared<MemoryRecord>> stored,
                                    std::vector<MemoryRecord> found) {
    std::map<Key, const MemoryRecord*> newest;
    for (const auto& record : found)
        if (mayRepeat(record))
            newest.emplace(Key(record.kind, *record.path), nullptr);
    for (const auto& record : stored)
        if (mayRepeat(*record))
            if (const auto wanted = newest.find({record->kind, *record->path});
                wanted != newest.end() && wanted->second == nullptr)
                wanted->second = &*record;
    for (auto& record : found) {
        if (!mayRepeat(record))
            continue;
        const auto* last = newest.at({record.kind, *record.path});
        if (last != nullptr && continues(record, *last))
            record.id = last->id;
    }
    return found;
}

} // namespace tidemark::SaveSeries
