#include "views/base/EventText.h"

#include "core/base/Text.h"
#include "core/records/Event.h"
#include "views/base/ShownText.h"

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
    return isDiagnosticReport(event);
}

/// Where the second line has a name behind its first part.
bool endsWithName(const Event& event) {
    return event.memory || (event.category == EventCategory::background && !event.changes.empty());
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
    const auto name = nameLength(event, subtitle);
    return fromUtf8(subtitle.substr(0, name)) + shownParts(subtitle.substr(name), dot);
}

} // namespace tidemark::eventText
