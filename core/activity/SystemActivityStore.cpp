#include "core/activity/SystemActivityStore.h"

#include "core/base/Documents.h"

namespace tidemark {

namespace {

void keepNewest(std::vector<SystemActivity>& records) {
    constexpr auto most = SystemActivityStore::mostRecords;
    if (records.size() > most)
        records.erase(records.begin(), records.end() - static_cast<std::ptrdiff_t>(most));
}

} // namespace

std::vector<SystemActivity> SystemActivityStore::read(const std::filesystem::path& document) {
    auto records = readDocument<std::vector<SystemActivity>>(document);
    if (!records)
        return {};
    keepNewest(*records);
    return *std::move(records);
}

void SystemActivityStore::append(SystemActivity activity) {
    std::vector<SystemActivity> next = current;
    next.push_back(std::move(activity));
    keepNewest(next);
    writeDocument(url, next, guard);
    current = std::move(next);
}

} // namespace tidemark
