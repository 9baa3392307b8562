#include "views/translations/CorePatterns.h"
#include "views/translations/CoreTexts.h"

#include <QtGlobal>
#include <array>

namespace tidemark {

namespace {

constexpr std::array textsOfGrowth{
    QT_TRANSLATE_NOOP("core", "Storage Over Time"),
    QT_TRANSLATE_NOOP("core", "Map of Folder Sizes"),
    QT_TRANSLATE_NOOP("core", "Not completely measured:"),
    QT_TRANSLATE_NOOP("core", "What Grew"),
    QT_TRANSLATE_NOOP("core", "Since You Last Looked"),
    QT_TRANSLATE_NOOP("core", "No complete size is known in this time. Sizes are recorded with "
                              "each capture."),
    QT_TRANSLATE_NOOP("core", "Free space"),
    QT_TRANSLATE_NOOP("core", "24 hours"),
    QT_TRANSLATE_NOOP("core", "3 months"),
    QT_TRANSLATE_NOOP("core", "1 year"),
    QT_TRANSLATE_NOOP("core", "When"),
    QT_TRANSLATE_NOOP("core", "Size"),
    QT_TRANSLATE_NOOP("core", "Change"),
    QT_TRANSLATE_NOOP("core", "Note"),
    QT_TRANSLATE_NOOP("core", "unchanged"),
    QT_TRANSLATE_NOOP("core", "Unknown"),
    QT_TRANSLATE_NOOP("core", "New"),
    QT_TRANSLATE_NOOP("core", "Gone"),
    QT_TRANSLATE_NOOP("core", "New volume"),
    QT_TRANSLATE_NOOP("core", "Measured in another way"),
    QT_TRANSLATE_NOOP("core", "computer asleep"),
    QT_TRANSLATE_NOOP("core", "Tidemark not running"),
    QT_TRANSLATE_NOOP("core", "recording paused"),
    QT_TRANSLATE_NOOP("core", "Free space is the same."),
    QT_TRANSLATE_NOOP("core", "The folders you monitor have the same size."),
    QT_TRANSLATE_NOOP("core", "No size is known at both ends of this period."),
    QT_TRANSLATE_NOOP("core", "less than a minute"),
    QT_TRANSLATE_NOOP("core", "Under a minute"),
};

/// Where a text can match two of these patterns, the longer one comes first.
constexpr std::array patternsOfGrowth{
    QT_TRANSLATE_NOOP("core", "%1 less free, although the folders you monitor shrank by %2."),
    QT_TRANSLATE_NOOP("core", "%1 more free, although the folders you monitor grew by %2."),
    QT_TRANSLATE_NOOP("core", "%1 less free; the folders you monitor have not changed."),
    QT_TRANSLATE_NOOP("core", "%1 more free; the folders you monitor have not changed."),
    QT_TRANSLATE_NOOP("core", "%1 less free; the folders you monitor grew by %2."),
    QT_TRANSLATE_NOOP("core", "%1 more free; the folders you monitor shrank by %2."),
    QT_TRANSLATE_NOOP("core", "%1 less free; %2 of it in folders you monitor."),
    QT_TRANSLATE_NOOP("core", "%1 more free; %2 of it in folders you monitor."),
    QT_TRANSLATE_NOOP("core", "The folders you monitor shrank by %1."),
    QT_TRANSLATE_NOOP("core", "The folders you monitor grew by %1."),
    QT_TRANSLATE_NOOP("core", "Nothing was observed for %1, in %2 gaps."),
    QT_TRANSLATE_NOOP("core", "Nothing was observed for %1."),
    QT_TRANSLATE_NOOP("core", "A place was not read for %1"),
    QT_TRANSLATE_NOOP("core", "Not observed %1 times, %2 in total"),
    QT_TRANSLATE_NOOP("core", "Nothing observed for %1"),
    QT_TRANSLATE_NOOP("core", "%1 without a size"),
    QT_TRANSLATE_NOOP("core", "Allocated File Storage: %1"),
    QT_TRANSLATE_NOOP("core", "and %1 more"),
    QT_TRANSLATE_NOOP("core", "%1 less free."),
    QT_TRANSLATE_NOOP("core", "%1 more free."),
    QT_TRANSLATE_NOOP("core", "%1 · since %2"),
    QT_TRANSLATE_NOOP("core", "%1, since %2"),
    QT_TRANSLATE_NOOP("core", "%1 since %2"),
};

constexpr std::array lengths{
    QT_TRANSLATE_NOOP("core", "%1 years"),     QT_TRANSLATE_NOOP("core", "%1 year"),
    QT_TRANSLATE_NOOP("core", "%1 months"),    QT_TRANSLATE_NOOP("core", "%1 month"),
    QT_TRANSLATE_NOOP("core", "%1 days"),      QT_TRANSLATE_NOOP("core", "%1 day"),
    QT_TRANSLATE_NOOP("core", "%1 hours"),     QT_TRANSLATE_NOOP("core", "%1 hour"),
    QT_TRANSLATE_NOOP("core", "%1 minutes"),   QT_TRANSLATE_NOOP("core", "%1 minute"),
    QT_TRANSLATE_NOOP("core", "%1 hr %2 min"), QT_TRANSLATE_NOOP("core", "%1 min"),
    QT_TRANSLATE_NOOP("core", "%1 of %2"),
};

constexpr std::array sizes{
    QT_TRANSLATE_NOOP("core", "%1 bytes"), QT_TRANSLATE_NOOP("core", "%1 byte"),
    QT_TRANSLATE_NOOP("core", "%1 KB"),    QT_TRANSLATE_NOOP("core", "%1.%2 MB"),
    QT_TRANSLATE_NOOP("core", "%1 MB"),    QT_TRANSLATE_NOOP("core", "%1.%2 GB"),
    QT_TRANSLATE_NOOP("core", "%1 GB"),    QT_TRANSLATE_NOOP("core", "%1.%2 TB"),
    QT_TRANSLATE_NOOP("core", "%1 TB"),    QT_TRANSLATE_NOOP("core", "%1.%2 PB"),
    QT_TRANSLATE_NOOP("core", "%1 PB"),    QT_TRANSLATE_NOOP("core", "%1.%2 EB"),
    QT_TRANSLATE_NOOP("core", "%1 EB"),
};

} // namespace

std::span<const char* const> growthTexts() {
    return textsOfGrowth;
}

std::span<const char* const> growthPatterns() {
    return patternsOfGrowth;
}

std::span<const char* const> lengthPatterns() {
    return lengths;
}

std::span<const char* const> sizePatterns() {
    return sizes;
}

} // namespace tidemark
