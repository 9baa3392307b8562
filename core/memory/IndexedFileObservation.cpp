#include "core/memory/IndexedFileObservation.h"

#include "core/base/Text.h"
#include "core/base/Url.h"

#include <algorithm>
#include <cmath>

namespace tidemark {

namespace {

bool isOfTheWeb(const std::string& origin) {
    const auto scheme = urlScheme(origin);
    return scheme == "https" || scheme == "http";
}

/// An index may hold any number; NaN and infinity can't be stored as a date.
std::optional<Date> finite(std::optional<Date> date) {
    return date && std::isfinite(date->secondsSince2001) ? date : std::nullopt;
}

} // namespace

std::vector<MemoryRecord> IndexedFileObservation::records(Date after, Date observedAt) const {
    std::optional<std::string> source;
    if (const auto found = std::ranges::find_if(origins, isOfTheWeb); found != origins.end())
        source = *found;

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
