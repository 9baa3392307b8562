#include "views/translations/CorePatterns.h"
#include "views/translations/CoreTexts.h"

#include <QtGlobal>
#include <array>

namespace tidemark {

namespace {

constexpr std::array textsSpoken{
    QT_TRANSLATE_NOOP("core", "1 event"),
    QT_TRANSLATE_NOOP("core", "1 file"),
    QT_TRANSLATE_NOOP("core", "1 download"),
    QT_TRANSLATE_NOOP("core", "1 clip"),
    QT_TRANSLATE_NOOP("core", "in the timeline filter"),
    QT_TRANSLATE_NOOP("core", "important"),
    QT_TRANSLATE_NOOP("core", "monitored"),
    QT_TRANSLATE_NOOP("core", "not monitored"),
    QT_TRANSLATE_NOOP("core", "no change"),
    QT_TRANSLATE_NOOP("core", "change unknown"),
    QT_TRANSLATE_NOOP("core", "unknown size"),
    QT_TRANSLATE_NOOP("core", "before unknown size"),
    QT_TRANSLATE_NOOP("core", "after unknown size"),
    QT_TRANSLATE_NOOP("core", "Zero KB"),
    QT_TRANSLATE_NOOP("core", "before Zero KB"),
    QT_TRANSLATE_NOOP("core", "after Zero KB"),
    QT_TRANSLATE_NOOP("core", "Observed empty"),
    QT_TRANSLATE_NOOP("core", "no complete size is known in this time."),
    QT_TRANSLATE_NOOP("core", "User service"),
    QT_TRANSLATE_NOOP("core", "System service"),
    QT_TRANSLATE_NOOP("core", "The computer was asleep."),
    QT_TRANSLATE_NOOP("core", "Tidemark was not running."),
    QT_TRANSLATE_NOOP("core", "Recording was paused."),
};

/// Where a text can match two of these patterns, the longer one comes first.
constexpr std::array patternsSpoken{
    QT_TRANSLATE_NOOP("core", "Before: measured %1"),
    QT_TRANSLATE_NOOP("core", "After: measured %1"),
    QT_TRANSLATE_NOOP("core", "Last measured size: %1"),
    QT_TRANSLATE_NOOP("core", "Sleep interval: %1"),
    QT_TRANSLATE_NOOP("core", "Size recorded %1"),
    QT_TRANSLATE_NOOP("core", "Battery at %1%"),
    QT_TRANSLATE_NOOP("core", "Previously %1 items"),
    QT_TRANSLATE_NOOP("core", "Previously %1 item"),
    QT_TRANSLATE_NOOP("core", "Previously %1"),
    QT_TRANSLATE_NOOP("core", "%1 decrease in free space"),
    QT_TRANSLATE_NOOP("core", "%1 increase in free space"),
    QT_TRANSLATE_NOOP("core", "%1 remaining"),
    QT_TRANSLATE_NOOP("core", "%1 × %2 pixels"),
    QT_TRANSLATE_NOOP("core", "%1 × %2 points"),
    QT_TRANSLATE_NOOP("core", "%1 smaller items"),
    QT_TRANSLATE_NOOP("core", "%1 captures"),
    QT_TRANSLATE_NOOP("core", "%1 downloads"),
    QT_TRANSLATE_NOOP("core", "%1 events"),
    QT_TRANSLATE_NOOP("core", "%1 files"),
    QT_TRANSLATE_NOOP("core", "%1 clips"),
    QT_TRANSLATE_NOOP("core", "%1 – now"),
    QT_TRANSLATE_NOOP("core", "Snapshot %1"),
    QT_TRANSLATE_NOOP("core", "after %1 without a size"),
    QT_TRANSLATE_NOOP("core", "before at least %1"),
    QT_TRANSLATE_NOOP("core", "at least %1"),
    QT_TRANSLATE_NOOP("core", "grew by %1"),
    QT_TRANSLATE_NOOP("core", "shrank by %1"),
    QT_TRANSLATE_NOOP("core", "from %1 to %2"),
    QT_TRANSLATE_NOOP("core", "before %1"),
    QT_TRANSLATE_NOOP("core", "after %1"),
    QT_TRANSLATE_NOOP("core", "change %1"),
    QT_TRANSLATE_NOOP("core", "last %1."),
    QT_TRANSLATE_NOOP("core", "Version %1"),
    QT_TRANSLATE_NOOP("core", "Net %1"),
};

} // namespace

std::span<const char* const> spokenTexts() {
    return textsSpoken;
}

std::span<const char* const> partPatterns() {
    return patternsSpoken;
}

} // namespace tidemark
