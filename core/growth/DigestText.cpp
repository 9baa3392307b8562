#include "core/growth/DigestText.h"

#include "core/base/Text.h"
#include "core/growth/GrowthText.h"
#include "core/growth/StorageChartText.h"
#include "core/presentation/SystemWords.h"

#include <vector>

namespace tidemark {

namespace digestText {

std::string period(const HistoryDigest& digest, const Calendar& calendar) {
    return storageChartText::lengthInWords(digest.through - digest.since) + ", since "
           + storageChartText::momentText(digest.since, calendar);
}

std::string counts(const HistoryDigest& digest) {
    std::vector<std::string> texts;
    for (const auto& count : digest.counts)
        texts.push_back(systemWords::shown(rawValue(count.category)) + " "
                        + std::to_string(count.events));
    return joined(texts, " · ");
}

std::string change(const GrowthItem& item) {
    return oneLine(item.name) + " " + signedBytes(item.change());
}

std::string gaps(const HistoryDigest& digest) {
    double seconds = 0;
    std::size_t number = 0;
    for (const auto& gap : digest.gaps)
        if (gap.reason != GapRow::Reason::unreadable) {
            ++number;
            seconds += gap.end - gap.start;
        }
    if (number == 0)
        return {};
    if (number == 1)
        return "Nothing was observed for " + storageChartText::lengthInWords(seconds) + ".";
    return "Nothing was observed for " + storageChartText::lengthInWords(seconds) + ", in "
           + std::to_string(number) + " gaps.";
}

} // namespace digestText

} // namespace tidemark
