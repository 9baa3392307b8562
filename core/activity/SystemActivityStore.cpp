#include "core/activity/SystemActivityStore.h"

#include "core/base/Files.h"
#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"
#include "core/base/Text.h"

namespace tidemark {

namespace {

void keepNewest(std::vector<SystemActivity>& records) {
    constexpr auto most = SystemActivityStore::mostRecords;
    if (records.size() > most)
        records.erase(records.begin(), records.end() - static_cast<std::ptrdiff_t>(most));
}

} // namespace

std::vector<SystemActivity> SystemActivityStore::read(const std::filesystem::path& document) {
    if (!fileExists(document))
        return {};
    const std::string bytes = readFile(document);
    try {
        auto records = json::decode<std::vector<SystemActivity>>(bytes);
        keepNewest(records);
        return records;
    } catch (const json::DecodingError& error) {
        throw json::DecodingError(
            asSentence(textFromBytes(document.native()) + " could not be read: " + error.what()));
    }
}

void SystemActivityStore::append(SystemActivity activity) {
    std::vector<SystemActivity> next = current;
    next.push_back(std::move(activity));
    keepNewest(next);
    createPrivateFolders(url.parent_path());
    FileReplacement document(url);
    json::write(next, [&](std::string_view piece) { document.write(piece); });
    document.commit();
    current = std::move(next);
}

} // namespace tidemark
