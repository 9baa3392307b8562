#include "core/memory/ClipRules.h"

#include "core/base/Characters.h"
#include "core/base/FileUrl.h"
#include "core/base/Text.h"
#include "core/base/Url.h"
#include "core/memory/ClipTypes.h"
#include "core/memory/ExcludedApplications.h"

#include <algorithm>

namespace tidemark::clipRules {

namespace {

constexpr std::size_t mostTitle = 120;

std::size_t limitOf(ClipPart part) {
    return part == ClipPart::file || part == ClipPart::text ? mostText : mostPayload;
}

bool isExcluded(const std::optional<ClipApplication>& application, std::string_view excluded) {
    return application && isExcludedApplication(excluded, application->id);
}

const ClipData* find(const ClipContents& contents, ClipPart part) {
    const auto found = contents.find(part);
    return found == contents.end() ? nullptr : &found->second;
}

/// The content of a part that is complete and within its limit.
const ClipData* usable(const ClipContents& contents, ClipPart part) {
    const auto* data = find(contents, part);
    const bool isUsable = data != nullptr && data->isComplete && !data->bytes.empty()
                          && data->bytes.size() <= limitOf(part);
    return isUsable ? data : nullptr;
}

std::string_view takeLine(std::string_view& text) {
    const auto end = text.find('\n');
    auto line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

/// The path in a list of URLs whose first one is that of a file. File managers put the intended
/// operation before them, and RFC 2483 allows comments.
std::optional<std::string> filePath(const ClipContents& contents) {
    const auto* data = find(contents, ClipPart::file);
    if (data == nullptr)
        return std::nullopt;
    std::string_view rest = data->bytes;
    while (!rest.empty()) {
        const bool isLastLine = !rest.contains('\n');
        const auto line = takeLine(rest);
        if (line.empty() || line.starts_with('#') || line == "copy" || line == "cut")
            continue;
        if (isLastLine && !data->isComplete)
            return std::nullopt;
        return fileUrl::path(line);
    }
    return std::nullopt;
}

/// The text to be kept; empty when there is none.
std::string text(const ClipContents& contents) {
    const auto* data = usable(contents, ClipPart::text);
    std::string decoded = data == nullptr ? std::string() : clipTypes::decodedText(*data);
    return decoded.size() <= mostText ? decoded : std::string();
}

std::string title(std::string_view text) {
    std::string title(firstCharacters(text, mostTitle));
    std::ranges::replace(title, '\n', ' ');
    return title;
}

bool isColor(std::string_view text) {
    const auto isHexadecimal = [](char digit) {
        return (digit >= '0' && digit <= '9') || (digit >= 'a' && digit <= 'f')
               || (digit >= 'A' && digit <= 'F');
    };
    return (text.size() == 4 || text.size() == 7) && text.starts_with('#')
           && std::ranges::all_of(text.substr(1), isHexadecimal);
}

std::string_view typeOfText(std::string_view text) {
    if (const auto scheme = urlScheme(text)) {
        const auto name = asciiLowercased(*scheme);
        if (name == "http" || name == "https")
            return "URL";
    }
    return isColor(text) ? "Color" : "Text";
}

void addPayload(MemoryRecord& record, const ClipData& data, std::string_view contentType) {
    record.payload = Data{data.bytes};
    record.contentType = contentType;
    record.pasteboardType = data.type;
}

/// Fills in what is kept of the content; false when nothing is.
bool classify(MemoryRecord& record, const ClipContents& contents) {
    if (const auto path = filePath(contents)) {
        record.contentType = "File";
        record.path = textFromBytes(*path);
        record.title = lastPathComponent(*record.path);
        record.pasteboardType = contents.at(ClipPart::file).type;
        return true;
    }
    if (auto copied = text(contents); !copied.empty()) {
        record.title = title(copied);
        record.contentType = typeOfText(copied);
        record.pasteboardType = contents.at(ClipPart::text).type;
        record.text = std::move(copied);
        if (const auto* rich = usable(contents, ClipPart::richText))
            addPayload(record, *rich, "Rich Text");
        return true;
    }
    const auto* image = usable(contents, ClipPart::image);
    if (image == nullptr)
        return false;
    record.title = "Copied image";
    addPayload(record, *image, "Image");
    return true;
}

void addSource(MemoryRecord& record, const ClipOrigin& origin) {
    const auto& source = origin.source();
    if (!source)
        return;
    record.appID = source->id;
    const bool isInFront = origin.frontmost && origin.frontmost->id == source->id;
    record.appName = isInFront ? origin.frontmost->name : source->name;
}

} // namespace

bool admits(const ClipOrigin& origin, std::string_view excluded) {
    return !isExcluded(origin.writer, excluded) && !isExcluded(origin.frontmost, excluded);
}

std::optional<Read> nextRead(const ClipTypeNames& types, const ClipContents& contents) {
    const auto unread = [&](ClipPart part) -> std::optional<Read> {
        if (contents.contains(part))
            return std::nullopt;
        for (const auto type : clipTypes::of(part))
            if (std::ranges::find(types, type) != types.end())
                return Read{part, std::string(type), limitOf(part)};
        return std::nullopt;
    };
    if (auto file = unread(ClipPart::file))
        return file;
    if (filePath(contents))
        return std::nullopt;
    if (auto plain = unread(ClipPart::text))
        return plain;
    return unread(text(contents).empty() ? ClipPart::image : ClipPart::richText);
}

bool keeps(const ClipContents& contents) {
    return filePath(contents) || !text(contents).empty()
           || usable(contents, ClipPart::image) != nullptr;
}

std::optional<MemoryRecord> record(const CopiedItem& item, Date now) {
    auto record =
        MemoryRecord::make(MemoryRecord::Kind::clipboard, now, "Clipboard", {}, {}, {}, now);
    if (!classify(record, item.contents))
        return std::nullopt;
    addSource(record, item.origin);
    const auto size =
        record.payload ? record.payload->bytes.size() : record.text.value_or("").size();
    record.bytes = static_cast<std::int64_t>(size);
    return record;
}

bool repeats(const MemoryRecord& clip, const MemoryRecord& newest) {
    // Compares the paths as well, because files have neither text nor payload.
    return clip.text == newest.text && clip.payload == newest.payload
           && clip.contentType == newest.contentType && clip.path == newest.path;
}

} // namespace tidemark::clipRules
