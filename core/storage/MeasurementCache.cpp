#include "core/storage/MeasurementCache.h"

#include "core/base/Documents.h"

#include <algorithm>
#include <vector>

namespace tidemark {

void MeasurementCache::load() {
    if (loaded)
        return;
    if (!path.empty())
        records = readDocument<MeasurementRecords>(path).value_or(MeasurementRecords());
    loaded = true;
}

const Shared<StorageMeasurementRecord>* MeasurementCache::find(const std::string& itemPath) const {
    const auto place = records.find(itemPath);
    return place == records.end() ? nullptr : &place->second;
}

void MeasurementCache::store(const Shared<StorageMeasurementRecord>& record, double now) {
    records.insert_or_assign(record->item->path, record);
    trim();
    if (!path.empty() && !unsavedSince)
        unsavedSince = now;
}

void MeasurementCache::trim() {
    if (records.size() <= limit)
        return;
    std::vector<MeasurementRecords::const_iterator> oldest;
    oldest.reserve(records.size());
    for (auto place = records.cbegin(); place != records.cend(); ++place)
        oldest.push_back(place);
    const std::size_t surplus = records.size() - limit;
    std::ranges::nth_element(
        oldest, oldest.begin() + static_cast<std::ptrdiff_t>(surplus), {}, [](const auto& place) {
            return std::pair(place->second->attemptedAt.value_or(Date::distantPast()),
                             std::string_view(place->first));
        });
    oldest.resize(surplus);
    for (const auto& place : oldest)
        records.erase(place);
}

void MeasurementCache::save() {
    if (!unsavedSince)
        return;
    writeDocument(path, records, guard);
    unsavedSince.reset();
}

} // namespace tidemark
