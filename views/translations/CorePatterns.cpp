#include "views/translations/CorePatterns.h"

#include "core/records/UnknownVersion.h"
#include "views/base/ShownText.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace tidemark {

namespace {

/// Where a text can match two of these patterns, the longer one comes first.
constexpr std::array patterns{
    QT_TRANSLATE_NOOP("core",
                      "Added %1 recent installation records from the system. This partial history "
                      "covers the last 7 days; future captures will reveal new changes."),
    QT_TRANSLATE_NOOP("core",
                      "Added %1 recent installation record from the system. This partial history "
                      "covers the last 7 days; future captures will reveal new changes."),
    QT_TRANSLATE_NOOP(
        "core",
        "%1 events from your current view. Your filters and comparison mode are preserved."),
    QT_TRANSLATE_NOOP(
        "core", "%1 event from your current view. Your filters and comparison mode are preserved."),
    QT_TRANSLATE_NOOP("core", "Toggle %1 in the timeline filter"),
    QT_TRANSLATE_NOOP("core", "%1 events · observed history"),
    QT_TRANSLATE_NOOP("core", "No comparable size at both ends: %1."),
    QT_TRANSLATE_NOOP("core", "Delete the snapshot “%1”?"),
    QT_TRANSLATE_NOOP("core", "Requesting access to %1"),
    QT_TRANSLATE_NOOP("core", "Next capture due: %1"),
    QT_TRANSLATE_NOOP("core", "Search history · %1"),
    QT_TRANSLATE_NOOP("core", "Stop monitoring %1"),
    QT_TRANSLATE_NOOP("core", "Import %1 Records"),
    QT_TRANSLATE_NOOP("core", "Listing text: %1"),
    QT_TRANSLATE_NOOP("core", "Import %1 Record"),
    QT_TRANSLATE_NOOP("core", "Custom: %1 days"),
    QT_TRANSLATE_NOOP("core", "Custom: %1 day"),
    QT_TRANSLATE_NOOP("core", "New volume: %1"),
    QT_TRANSLATE_NOOP("core", "Snapshot: %1"),
};

/// Titles of events. Where one pattern ends like another, the longer one comes first.
constexpr std::array titles{
    QT_TRANSLATE_NOOP("core", "%1 Configuration Changed"),
    QT_TRANSLATE_NOOP("core", "%1 Installation Recorded"),
    QT_TRANSLATE_NOOP("core", "%1: New Background Item"),
    QT_TRANSLATE_NOOP("core", "%1 Contents Changed"),
    QT_TRANSLATE_NOOP("core", "%1 Shrank in Size"),
    QT_TRANSLATE_NOOP("core", "%1 Grew in Size"),
    QT_TRANSLATE_NOOP("core", "%1 Disconnected"),
    QT_TRANSLATE_NOOP("core", "%1 Launched"),
    QT_TRANSLATE_NOOP("core", "%1 Unmounted"),
    QT_TRANSLATE_NOOP("core", "%1 Installed"),
    QT_TRANSLATE_NOOP("core", "%1 Connected"),
    QT_TRANSLATE_NOOP("core", "%1 Changed"),
    QT_TRANSLATE_NOOP("core", "%1 Created"),
    QT_TRANSLATE_NOOP("core", "%1 Mounted"),
    QT_TRANSLATE_NOOP("core", "%1 Updated"),
    QT_TRANSLATE_NOOP("core", "%1 Removed"),
    QT_TRANSLATE_NOOP("core", "%1 Closed"),
};

constexpr std::string_view first = "%1";
constexpr std::string_view second = "%2";

/// What stands for "%1" and "%2"; the second one is empty in a pattern that has only the first.
using Parts = std::pair<std::string_view, std::string_view>;

/// Absent for a text that does not match the pattern. If what stands between "%1" and "%2" occurs
/// more than once, its last occurrence counts: the first part is often a name, which can contain
/// anything.
std::optional<Parts> partsOf(std::string_view text, std::string_view pattern) {
    const auto atFirst = pattern.find(first);
    const auto atSecond = pattern.find(second);
    const bool hasSecond = atSecond != pattern.npos;
    const auto before = pattern.substr(0, atFirst);
    const auto after =
        pattern.substr(hasSecond ? atSecond + second.size() : atFirst + first.size());
    if (text.size() <= before.size() + after.size() || !text.starts_with(before)
        || !text.ends_with(after))
        return std::nullopt;
    text.remove_prefix(before.size());
    text.remove_suffix(after.size());
    if (!hasSecond)
        return Parts{text, {}};
    const auto start = atFirst + first.size();
    const auto between = pattern.substr(start, atSecond - start);
    const auto found = text.rfind(between);
    if (found == text.npos || found == 0 || found + between.size() == text.size())
        return std::nullopt;
    return Parts{text.substr(0, found), text.substr(found + between.size())};
}

QString translation(const char* source) {
    return QCoreApplication::translate("core", source);
}

QString unchanged(std::string_view text) {
    return QString::fromUtf8(text);
}

bool isNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

/// The translation by the first pattern that the text matches with a number for each "%1" and "%2".
std::optional<QString> ofNumbers(std::span<const char* const> all, std::string_view text) {
    for (const char* pattern : all) {
        const auto parts = partsOf(text, pattern);
        if (!parts || !isNumber(parts->first))
            continue;
        if (parts->second.empty())
            return translation(pattern).arg(unchanged(parts->first));
        if (isNumber(parts->second))
            return translation(pattern).arg(unchanged(parts->first), unchanged(parts->second));
    }
    return std::nullopt;
}

/// Quantities without a number.
constexpr std::array wordedQuantities{"less than a minute", "Under a minute", "Zero KB"};

QString shownQuantity(std::string_view text) {
    return translatedQuantity(text).value_or(unchanged(text));
}

/// What stands in one of `partPatterns`: a quantity, or a version, which can be unknown.
QString shownInPart(std::string_view text) {
    return text == unknownVersion ? shownText(text) : shownQuantity(text);
}

using ShownInside = QString(std::string_view);

std::optional<QString> translatedBy(std::span<const char* const> all, std::string_view text,
                                    ShownInside shownFirst, ShownInside shownSecond) {
    for (const char* pattern : all)
        if (const auto parts = partsOf(text, pattern))
            // In one step, since a name can contain "%2".
            return parts->second.empty() ? translation(pattern).arg(shownFirst(parts->first))
                                         : translation(pattern).arg(shownFirst(parts->first),
                                                                    shownSecond(parts->second));
    return std::nullopt;
}

std::optional<QString> translatedBy(std::span<const char* const> all, std::string_view text,
                                    ShownInside shownInside) {
    return translatedBy(all, text, shownInside, shownInside);
}

QString shownCause(std::string_view text) {
    return translatedBy(causePatterns(), text, unchanged).value_or(unchanged(text));
}

} // namespace

std::span<const char* const> corePatterns() {
    return patterns;
}

std::span<const char* const> titlePatterns() {
    return titles;
}

std::optional<QString> translatedByPattern(std::string_view text) {
    if (auto shown = translatedBy(corePatterns(), text, unchanged))
        return shown;
    if (auto shown = translatedBy(recordPatterns(), text, unchanged, shownText))
        return shown;
    if (auto shown = translatedTitle(text))
        return shown;
    if (auto shown = translatedBy(failurePatterns(), text, shownCause))
        return shown;
    if (auto shown = translatedBy(causePatterns(), text, unchanged))
        return shown;
    return translatedBy(growthPatterns(), text, shownQuantity);
}

std::optional<QString> translatedTitle(std::string_view text) {
    return translatedBy(titlePatterns(), text, unchanged);
}

std::optional<QString> translatedPart(std::string_view part) {
    return translatedBy(partPatterns(), part, shownInPart);
}

std::optional<QString> translatedQuantity(std::string_view text) {
    if (std::ranges::find(wordedQuantities, text) != wordedQuantities.end())
        return translation(std::string(text).c_str());
    // "At least" is written before a size as "≥ ".
    for (const std::string_view sign : {"+", "−", "≥ "})
        if (text.starts_with(sign)) {
            const auto shown = ofNumbers(sizePatterns(), text.substr(sign.size()));
            return shown ? std::optional(unchanged(sign) + *shown) : std::nullopt;
        }
    auto shown = ofNumbers(sizePatterns(), text);
    return shown ? shown : ofNumbers(lengthPatterns(), text);
}

} // namespace tidemark
