#include "core/presentation/EventParts.h"

#include "core/base/Text.h"
#include "core/presentation/InspectionWords.h"
#include "core/presentation/SystemWords.h"
#include "core/records/UnknownVersion.h"
#include "core/timeline/EventDisplay.h"

#include <algorithm>
#include <array>
#include <optional>
#include <variant>

namespace tidemark::eventParts {

namespace {

constexpr std::string_view dot = " · ";
constexpr std::string_view arrow = inspectionWords::arrow;

Part words(std::string_view text) {
    return {Part::Kind::words, std::string(text)};
}

Part literal(std::string_view text) {
    return {Part::Kind::literal, std::string(text)};
}

Part versionPart(std::string_view text) {
    const bool isKnown = text != unknownVersion && text != inspectionWords::notPresent;
    return isKnown ? literal(text) : words(text);
}

/// The line divided at dots and arrows: `makePart` makes a part of each piece, and the dots and
/// arrows are literal parts between them.
Parts split(std::string_view line, Part (*makePart)(std::string_view)) {
    Parts parts;
    while (true) {
        const auto atDot = line.find(dot);
        const auto atArrow = line.find(arrow);
        const auto end = std::min(atDot, atArrow);
        parts.push_back(makePart(line.substr(0, end)));
        if (end == line.npos)
            return parts;
        const auto separator = atDot < atArrow ? dot : arrow;
        parts.push_back(literal(separator));
        line.remove_prefix(end + separator.size());
    }
}

/// "Last used · /home": words, which are followed by a name that may contain the separator.
Parts wordsAndName(std::string_view line) {
    const auto end = std::min(line.find(dot), line.size());
    return {words(line.substr(0, end)), literal(line.substr(end))};
}

/// Whether the text has the form that `signedBytes` writes.
bool isSignedSize(std::string_view text) {
    constexpr std::array units{" bytes", " byte", " KB", " MB", " GB", " TB", " PB", " EB"};
    for (const std::string_view sign : {"+", "−"}) {
        if (!text.starts_with(sign))
            continue;
        const auto size = text.substr(sign.size());
        const auto unit = size.find_first_not_of("0123456789.");
        return size == byteString(0)
               || (unit != 0 && unit != size.npos
                   && std::ranges::find(units, size.substr(unit)) != units.end());
    }
    return false;
}

bool isNet(std::string_view text) {
    constexpr std::string_view net = "Net ";
    return text.starts_with(net) && isSignedSize(text.substr(net.size()));
}

/// "Projects +1.2 GB".
std::optional<Parts> nameAndSize(std::string_view text) {
    for (const std::string_view sign : {" +", " −"}) {
        const auto place = text.rfind(sign);
        if (place == text.npos || place == 0 || !isSignedSize(text.substr(place + 1)))
            continue;
        const auto name = text.substr(0, place);
        return Parts{name == FolderSize::filesInFolder ? words(name) : literal(name), literal(" "),
                     words(text.substr(place + 1))};
    }
    return std::nullopt;
}

/// The second line of a folder that changed its size: "+1.5 GB · a +1.4 GB", or, when its contents
/// changed more than its size, "a +1.5 GB · b −1.4 GB · Net +0.1 GB". Any name may be "Net" or
/// contain the separator. Absent for a line of another form.
std::optional<Parts> sizes(std::string_view line) {
    Parts parts;
    const auto total = line.substr(0, line.find(dot));
    const bool hasTotal = isSignedSize(total);
    if (hasTotal) {
        parts.push_back(words(total));
        line.remove_prefix(total.size());
    }
    while (!line.empty()) {
        if (line.starts_with(dot)) {
            parts.push_back(literal(dot));
            line.remove_prefix(dot.size());
        }
        if (!hasTotal && isNet(line)) {
            parts.push_back(words(line));
            return parts;
        }
        std::size_t end = 0;
        std::optional<Parts> found;
        while (!found && end < line.size()) {
            end = std::min(line.find(dot, end + 1), line.size());
            found = nameAndSize(line.substr(0, end));
        }
        if (!found)
            return std::nullopt;
        std::ranges::move(*found, std::back_inserter(parts));
        line.remove_prefix(end);
    }
    return parts;
}

/// Divides the stored second line of an event. There is an operator for each kind of change with
/// names in its line, since the kind says where they are; the last operator is for all other kinds.
/// The line is not made anew from the change, because earlier releases wrote other texts.
struct SubtitleOfChange {
    std::string_view line;

    Parts operator()(const change::MetadataChanged& changed) const {
        const auto& item = changed.after ? changed.after : changed.before;
        if (item && item->kind == ObservedMetadata::Kind::diagnostic)
            return {literal(line)};
        if (item && item->kind == ObservedMetadata::Kind::homebrew)
            return split(line, versionPart);
        return split(line, words);
    }
    Parts operator()(const change::ApplicationInstalled&) const { return {versionPart(line)}; }
    Parts operator()(const change::ApplicationUpdated&) const { return split(line, versionPart); }
    Parts operator()(const change::OperatingSystemChanged&) const { return split(line, literal); }
    Parts operator()(const change::BackgroundAdded&) const { return wordsAndName(line); }
    Parts operator()(const change::BackgroundRemoved&) const { return wordsAndName(line); }
    Parts operator()(const change::BackgroundChanged&) const { return wordsAndName(line); }
    Parts operator()(const change::FolderSizeChanged&) const {
        auto parts = sizes(line);
        return parts ? *std::move(parts) : split(line, words);
    }
    Parts operator()(const auto&) const { return split(line, words); }
};

bool isTitledByName(const Event& event) {
    using enum MemoryRecord::Kind;
    return event.memory && event.memory->kind != appLaunched && event.memory->kind != appClosed;
}

Parts ofMemory(const MemoryRecord& record, std::string_view line) {
    // The second line of a clip of unknown type has only the name of an application.
    const bool isOnlyName =
        record.kind == MemoryRecord::Kind::clipboard && !record.contentType.has_value();
    return isOnlyName ? Parts{literal(line)} : wordsAndName(line);
}

bool isSubtitleOfNetwork(const Event& event) {
    const auto& activity = event.systemActivity;
    return activity && activity->kind == SystemActivity::Kind::wifiChanged && activity->wifiContext
           && activity->wifiContext->networkName;
}

/// The parts of the line as it is stored, before its words are replaced by those of this system.
Parts storedSubtitle(const Event& event, std::string_view line) {
    if (event.memory)
        return ofMemory(*event.memory, line);
    if (isSubtitleOfNetwork(event))
        return {literal(line)};
    if (event.volumeContext) {
        const std::string volume = event.volumeContext->name + std::string(dot);
        if (line.starts_with(volume)) {
            Parts parts = split(line.substr(volume.size()), words);
            parts.insert(parts.begin(), literal(volume));
            return parts;
        }
    }
    if (event.changes.empty())
        return split(line, words);
    return std::visit(SubtitleOfChange{line}, event.changes.front());
}

Parts inWordsOfThisSystem(Parts parts) {
    for (auto& part : parts)
        part.text =
            oneLine(part.kind == Part::Kind::words ? systemWords::shown(part.text) : part.text);
    std::erase_if(parts, [](const auto& part) { return part.text.empty(); });
    return parts;
}

} // namespace

Parts title(const Event& event) {
    const std::string title = displayTitle(event);
    return inWordsOfThisSystem({isTitledByName(event) ? literal(title) : words(title)});
}

Parts subtitle(const Event& event) {
    return inWordsOfThisSystem(storedSubtitle(event, displaySubtitle(event)));
}

std::string joined(const Parts& parts) {
    std::string text;
    for (const auto& part : parts)
        text += part.text;
    return text;
}

} // namespace tidemark::eventParts
