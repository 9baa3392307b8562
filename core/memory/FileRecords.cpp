#include "core/memory/FileRecords.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <unordered_map>

namespace tidemark::FileRecords {

bool isRecorded(std::string_view path) {
    const bool isUnfinished = path.ends_with(".download") || path.ends_with(".crdownload");
    const bool isInBundle = path.contains(".app/") || path.ends_with(".app");
    const bool isHidden = path.starts_with('.') || path.contains("/.");
    return !path.empty() && !isUnfinished && !isInBundle && !isHidden
           && !path.contains("/Library/");
}

std::vector<MemoryRecord> of(std::span<const IndexedFileObservation> files, Date after,
                             Date observedAt) {
    std::vector<MemoryRecord> records;
    for (const auto& file : files)
        if (isRecorded(file.path))
            std::ranges::move(file.records(after, observedAt), std::back_inserter(records));
    return records;
}

std::vector<MemoryRecord> reopenedDownloads(std::span<const Shared<MemoryRecord>> stored,
                                            std::span<const MemoryRecord> found) {
    std::unordered_map<std::string_view, Date> opened;
    for (const auto& record : found)
        if (record.path && record.lastOpened) {
            Date& latest = opened.try_emplace(*record.path, *record.lastOpened).first->second;
            latest = std::max(latest, *record.lastOpened);
        }
    std::vector<MemoryRecord> reopened;
    for (const auto& record : stored) {
        if (record->kind != MemoryRecord::Kind::downloaded || !record->path)
            continue;
        const auto latest = opened.find(*record->path);
        if (latest == opened.end()
            || latest->second <= record->lastOpened.value_or(Date::distantPast()))
            continue;
        reopened.push_back(*record);
        reopened.back().lastOpened = latest->second;
    }
    return reopened;
}

} // namespace tidemark::FileRecords
