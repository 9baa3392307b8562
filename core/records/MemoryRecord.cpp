#include "core/records/MemoryRecord.h"

#include "core/base/Digest.h"
#include "core/base/Text.h"
#include "core/base/Uuid.h"

#include <algorithm>
#include <array>

namespace tidemark {

namespace {

constexpr std::string_view dot = " · ";
/// Upper bound of a duration, which may be any number in a damaged document. A double can't
/// represent every whole second above it.
constexpr double mostSeconds = 9e15;

struct MemoryWords {
    std::string_view activity;
    std::string_view explanation;
};

constexpr std::string_view ofChangedFiles =
    "macOS Spotlight metadata, not a complete filesystem audit. Indexed files only; times may "
    "precede Tidemark's observation.";

/// Indexed by kind.
constexpr auto words = std::to_array<MemoryWords>({
    {"Last used", "macOS Spotlight last-used metadata. It may be delayed or unavailable and does "
                  "not identify which application opened the file."},
    {"Modified", ofChangedFiles},
    {"Created", ofChangedFiles},
    {"Downloaded", "Download metadata supplied by macOS Spotlight. A last-used date is not proof "
                   "of reading a document. Missing metadata is unknown."},
    {"Launched", "Observed macOS application launch notification while Tidemark was recording."},
    {"Closed", "Observed macOS application termination notification while Tidemark was recording. "
               "Closing a window alone does not quit the application."},
    {"Foreground",
     "Legacy foreground-time record. Tidemark no longer collects foreground sessions."},
    {"Copied", "Captured after clipboard history was enabled. Source is the frontmost application "
               "at capture time and may differ from the writer. Sensitive marked items and "
               "excluded apps are skipped."},
});
static_assert(words.size() == json::rawValues<MemoryRecord::Kind>.size());

const MemoryWords& memoryWordsOf(MemoryRecord::Kind kind) {
    return words[static_cast<std::size_t>(kind)];
}

std::string twoParts(std::string_view first, std::string_view second) {
    std::string text(first);
    if (!first.empty() && !second.empty())
        text += dot;
    return text.append(second);
}

} // namespace

MemoryRecord MemoryRecord::make(Kind kind, Date timestamp, std::string title,
                                std::optional<std::string> path, std::optional<std::string> appName,
                                std::optional<std::string> appID, Date observedAt) {
    MemoryRecord record;
    record.id = Uuid::random().text();
    record.kind = kind;
    record.timestamp = timestamp;
    record.title = std::move(title);
    record.path = std::move(path);
    record.appName = std::move(appName);
    record.appID = std::move(appID);
    record.observedAt = observedAt;
    return record;
}

std::string MemoryRecord::fileID(Kind kind, std::string_view path, Date date) {
    std::string identity(rawValue(kind));
    identity.append("|").append(path).append("|");
    return Sha256::hex(identity + shortestText(date.secondsSince1970()));
}

std::string_view MemoryRecord::activity() const {
    return memoryWordsOf(kind).activity;
}

std::string_view MemoryRecord::explanation() const {
    return memoryWordsOf(kind).explanation;
}

std::string MemoryRecord::subtitle() const {
    if (isFile())
        return twoParts(activity(), path ? parentFolder(*path) : std::string_view());
    if (kind == Kind::clipboard)
        return twoParts(contentType.value_or(""), appName.value_or(""));
    if (kind != Kind::appUsage)
        return std::string(activity());
    const auto seconds =
        static_cast<std::int64_t>(std::clamp(duration.value_or(0), -mostSeconds, mostSeconds));
    return std::to_string(seconds / 60) + "m " + std::to_string(seconds % 60) + "s in foreground";
}

} // namespace tidemark
