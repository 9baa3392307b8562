#include "core/growth/StorageHistoryStore.h"

#include "core/base/Documents.h"
#include "core/base/Text.h"

#include <algorithm>
#include <cerrno>
#include <cmath>

namespace tidemark {

namespace {

/// What is wrong with a series; null when nothing is.
const char* problemOf(const StorageSeries& series) {
    if (series.measuredAt.size() != series.bytes.size())
        return "a series has not as many dates as sizes";
    if (series.measuredAt.empty())
        return "a series is empty";
    if (!std::ranges::all_of(series.measuredAt,
                             [](Date date) { return std::isfinite(date.secondsSince2001); }))
        return "a series has a date that is none";
    if (std::ranges::adjacent_find(series.measuredAt, std::ranges::greater_equal())
        != series.measuredAt.end())
        return "the dates of a series are not in order";
    return nullptr;
}

} // namespace

StorageHistory StorageHistoryStore::decoded(std::string_view bytes,
                                            const std::filesystem::path& document) {
    auto history = decodeDocument<StorageHistory>(bytes, document);
    if (history.schemaVersion != StorageHistory::supportedVersion)
        throw FileError(document,
                        "is of version " + std::to_string(history.schemaVersion)
                            + ", which this release can't read",
                        EILSEQ);
    for (const auto& series : history.series)
        if (const char* problem = problemOf(*series))
            throw FileError(document, std::string("could not be read: ") + problem, EILSEQ);
    return history;
}

std::optional<StorageHistory> StorageHistoryStore::read(const std::filesystem::path& document) {
    const auto bytes = readDocumentBytes(document);
    return bytes ? std::optional(decoded(*bytes, document)) : std::nullopt;
}

void StorageHistoryStore::save(const StorageHistory& history) {
    writeDocument(url, history, guard);
}

} // namespace tidemark
