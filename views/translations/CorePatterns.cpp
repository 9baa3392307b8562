#include "views/translations/CorePatterns.h"

#include <QCoreApplication>
#include <array>

namespace tidemark {

namespace {

/// Where one fits inside of another, the longer one comes first.
constexpr std::array patterns{
    QT_TRANSLATE_NOOP("core",
                      "Added %1 recent installation records from the system. This partial history "
                      "covers the last 7 days; future captures will reveal new changes."),
    QT_TRANSLATE_NOOP("core",
                      "Added %1 recent installation record from the system. This partial history "
                      "covers the last 7 days; future captures will reveal new changes."),
    QT_TRANSLATE_NOOP(
        "core",
        "Tidemark couldn’t read its history. Your existing file has not been overwritten. %1"),
    QT_TRANSLATE_NOOP(
        "core",
        "%1 events from your current view. Your filters and comparison mode are preserved."),
    QT_TRANSLATE_NOOP(
        "core", "%1 event from your current view. Your filters and comparison mode are preserved."),
    QT_TRANSLATE_NOOP("core", "Couldn’t capture a fresh snapshot. %1"),
    QT_TRANSLATE_NOOP("core", "The snapshot couldn’t be saved. %1"),
    QT_TRANSLATE_NOOP("core", "Toggle %1 in the timeline filter"),
    QT_TRANSLATE_NOOP("core", "%1 events · observed history"),
    QT_TRANSLATE_NOOP("core", "Couldn’t save the export. %1"),
    QT_TRANSLATE_NOOP("core", "Allocated File Storage: %1"),
    QT_TRANSLATE_NOOP("core", "Delete the snapshot “%1”?"),
    QT_TRANSLATE_NOOP("core", "%1 Configuration Changed"),
    QT_TRANSLATE_NOOP("core", "%1 Installation Recorded"),
    QT_TRANSLATE_NOOP("core", "%1: New Background Item"),
    QT_TRANSLATE_NOOP("core", "Requesting access to %1"),
    QT_TRANSLATE_NOOP("core", "Next capture due: %1"),
    QT_TRANSLATE_NOOP("core", "%1 Contents Changed"),
    QT_TRANSLATE_NOOP("core", "Stop monitoring %1"),
    QT_TRANSLATE_NOOP("core", "%1 Shrank in Size"),
    QT_TRANSLATE_NOOP("core", "Import %1 Records"),
    QT_TRANSLATE_NOOP("core", "Listing text: %1"),
    QT_TRANSLATE_NOOP("core", "Import %1 Record"),
    QT_TRANSLATE_NOOP("core", "%1 Grew in Size"),
    QT_TRANSLATE_NOOP("core", "%1 Disconnected"),
    QT_TRANSLATE_NOOP("core", "%1 Installed"),
    QT_TRANSLATE_NOOP("core", "%1 Connected"),
    QT_TRANSLATE_NOOP("core", "%1 Updated"),
    QT_TRANSLATE_NOOP("core", "%1 Removed"),
    QT_TRANSLATE_NOOP("core", "Version %1"),
};

constexpr std::string_view place = "%1";

} // namespace

std::span<const char* const> corePatterns() {
    return patterns;
}

std::optional<QString> translatedByPattern(std::string_view text) {
    for (const std::string_view pattern : patterns) {
        const auto at = pattern.find(place);
        const auto before = pattern.substr(0, at);
        const auto after = at == pattern.npos ? "" : pattern.substr(at + place.size());
        if (text.size() <= before.size() + after.size() || !text.starts_with(before)
            || !text.ends_with(after))
            continue;
        text.remove_prefix(before.size());
        text.remove_suffix(after.size());
        return QCoreApplication::translate("core", pattern.data())
            .replace(QStringLiteral("%1"),
                     QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    }
    return std::nullopt;
}

} // namespace tidemark
