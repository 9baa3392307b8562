#include "views/base/EventText.h"

#include "core/base/Text.h"
#include "core/records/Event.h"
#include "views/base/ShownText.h"
#include "views/translations/CorePatterns.h"

#include <algorithm>
#include <optional>
#include <variant>

namespace tidemark::eventText {

namespace {

constexpr std::string_view dot = " · ";
constexpr std::string_view arrow = " → ";

QString fromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

bool isDiagnosticReport(const Event& event) {
    if (event.changes.empty())
        return false;
    const auto* changed = std::get_if<change::MetadataChanged>(&event.changes.front());
    return changed && changed->after && changed->after->kind == ObservedMetadata::Kind::diagnostic;
}

/// Whether the second line is a name and nothing else: of a report, or of a Wi-Fi network.
bool isName(const Event& event) {
    const auto& activity = event.systemActivity;
    if (activity && activity->kind == SystemActivity::Kind::wifiChanged)
        return activity->wifiContext && activity->wifiContext->networkName;
    if (event.memory && event.memory->kind == MemoryRecord::Kind::clipboard)
        return !event.memory->contentType;
    return isDiagnosticReport(event);
}

/// Where the second line has a name behind its first part.
bool endsWithName(const Event& event) {
    return event.memory || (event.category == EventCategory::background && !event.changes.empty());
}

bool isSizeOfFolder(const Event& event) {
    return !event.changes.empty()
           && std::holds_alternative<change::FolderSizeChanged>(event.changes.front());
}

/// The second line of a folder that changed its size: "+1.5 GB · a +1.4 GB", or, when its contents
/// changed more than its size, "a +1.5 GB · b −1.4 GB · Net +0.1 GB". Any name may be "Net" or
/// contain the separator. Nothing for a line of another form.
std::optional<QString> shownSizes(std::string_view subtitle) {
    const auto start = std::min(subtitle.find(dot), subtitle.size());
    const auto total = translatedQuantity(subtitle.substr(0, start));
    QString shown = total.value_or(QString());
    std::string_view rest = total ? subtitle.substr(start) : subtitle;
    while (!rest.empty()) {
        if (rest.starts_with(dot)) {
            shown += fromUtf8(dot);
            rest.remove_prefix(dot.size());
        }
        std::size_t end = 0;
        std::optional<QString> part;
        while (!part && end < rest.size()) {
            end = std::min(rest.find(dot, end + 1), rest.size());
            const bool isNet = !total && end == rest.size() && rest.starts_with("Net ");
            part = isNet ? shownPart(rest) : shownNameAndSize(rest.substr(0, end));
        }
        if (!part)
            return std::nullopt;
        shown += *part;
        rest.remove_prefix(end);
    }
    return shown;
}

/// The length of the name of a volume, with which the second line of its free space begins.
std::size_t nameLength(const Event& event, std::string_view subtitle) {
    if (!event.volumeContext)
        return 0;
    const std::string name = oneLine(event.volumeContext->name + std::string(dot));
    return subtitle.starts_with(name) ? name.size() : 0;
}

} // namespace

QString title(const Event& event, std::string_view title) {
    const bool isName = event.memory && event.memory->kind != MemoryRecord::Kind::appLaunched
                        && event.memory->kind != MemoryRecord::Kind::appClosed;
    return isName ? fromUtf8(title) : shownText(title);
}

QString subtitle(const Event& event, std::string_view subtitle) {
    if (isName(event))
        return fromUtf8(subtitle);
    if (endsWithName(event)) {
        const auto end = std::min(subtitle.find(dot), subtitle.size());
        return shownPart(subtitle.substr(0, end)) + fromUtf8(subtitle.substr(end));
    }
    if (event.systemActivity && subtitle.contains(arrow))
        return shownParts(subtitle, arrow);
    if (isSizeOfFolder(event))
        if (auto sizes = shownSizes(subtitle))
            return *std::move(sizes);
    const auto name = nameLength(event, subtitle);
    return fromUtf8(subtitle.substr(0, name)) + shownParts(subtitle.substr(name), dot);
}

} // namespace tidemark::eventText
