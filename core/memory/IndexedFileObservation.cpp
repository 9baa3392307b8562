#include "core/memory/IndexedFileObservation.h"

#include "core/base/Text.h"
#include "core/memory/WebOrigin.h"

#include <cmath>

namespace tidemark {

namespace {

/// The first origin on the web.
std::optional<std::string> sourceOf(const std::vector<std::string>& origins) {
    for (const auto& origin : origins)
        if (auto source = webOrigin(origin))
            return source;
    return std::nullopt;
}

/// An index may hold any number; NaN and infinity can't be stored as a date.
std::optional<Date> finite(std::optional<Date> date) {
    return date && std::isfinite(date->secondsSince2001) ? date : std::nullopt;
}

} // namespace

std::vector<MemoryRecord> IndexedFileObservation::records(Date after, Date observedAt) const {
    const auto source = sourceOf(origins);
    const auto lastOpened = finite(used);
    using Kind = MemoryRecord::Kind;
    const std::pair<Kind, std::optional<Date>> candidates[] = {
        {Kind::fileOpened, lastOpened},
        {Kind::fileModified, finite(modified)},
        {Kind::fileCreated, finite(created)},
        {Kind::downloaded, source ? finite(added) : std::nullopt},
    };
    std::vector<MemoryRecord> records;
    for (const auto& [kind, date] : candidates) {
        if (!date || *date < after || *date > observedAt)
            continue;
        MemoryRecord& record = records.emplace_back();
        record.id = MemoryRecord::fileID(kind, path, *date);
        record.kind = kind;
        record.timestamp = *date;
        record.title = lastPathComponent(path);
        record.path = path;
        record.bytes = bytes;
        record.sourceURL = source;
        record.lastOpened = lastOpened;
        record.observedAt = observedAt;
    }
    return records;
}

} // namespace tidemark
