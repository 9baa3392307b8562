#include "core/memory/IndexedFileObservation.h"

#include "core/base/Text.h"
#include "core/base/Url.h"

#include <algorithm>

namespace tidemark {

namespace {

bool isOfTheWeb(const std::string& origin) {
    const auto scheme = urlScheme(origin);
    return scheme == "https" || scheme == "http";
}

} // namespace

std::vector<MemoryRecord> IndexedFileObservation::records(Date after, Date observedAt) const {
    std::optional<std::string> source;
    if (const auto found = std::ranges::find_if(origins, isOfTheWeb); found != origins.end())
        source = *found;

    using Kind = MemoryRecord::Kind;
    const std::pair<Kind, std::optional<Date>> candidates[] = {
        {Kind::fileOpened, used},
        {Kind::fileModified, modified},
        {Kind::fileCreated, created},
        {Kind::downloaded, source ? added : std::nullopt},
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
        record.lastOpened = used;
        record.observedAt = observedAt;
    }
    return records;
}

} // namespace tidemark
