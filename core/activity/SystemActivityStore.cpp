#include "core/activity/SystemActivityStore.h"

#include "core/base/Documents.h"

namespace tidemark {

namespace {

void keepNewest(std::vector<Shared<SystemActivity>>& records) {
    constexpr auto most = SystemActivityStore::mostRecords;
    if (records.size() > most)
        records.erase(records.begin(), records.end() - static_cast<std::ptrdiff_t>(most));
}

} // namespace

std::vector<Shared<SystemActivity>>
SystemActivityStore::read(const std::filesystem::path& document) {
    auto records = readDocument<std::vector<Shared<SystemActivity>>>(document);
    if (!records)
        return {};
    keepNewest(*records);
    return *std::move(records);
}

void SystemActivityStore::append(SystemActivity activity) {
    std::vector<Shared<SystemActivity>> next = current;
    next.emplace_back(std::move(activity));
    keepNewest(next);
    writeDocument(url, next, guard);
    current = std::move(next);
}

} // namespace tidemark
