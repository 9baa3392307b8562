#include "core/base/Text.h"
#include "core/memory/ClipTypes.h"
#include "core/memory/SystemClipTypes.h"

#include <algorithm>
#include <array>

namespace tidemark {

namespace {

/// UTF8_STRING and STRING are names of X11 (ICCCM 2.6.2); programs use them on Wayland as well.
constexpr std::string_view latin1 = "STRING";
constexpr auto text = std::to_array<std::string_view>({
    "UTF8_STRING",
    "text/plain;charset=utf-8",
    latin1,
    "text/plain",
});
constexpr auto file = std::to_array<std::string_view>({
    "text/uri-list",
    "x-special/gnome-copied-files",
});
constexpr auto richText = std::to_array<std::string_view>({
    "text/rtf",
    "application/rtf",
    "text/richtext",
});
constexpr auto image = std::to_array<std::string_view>({"image/png", "image/tiff"});

/// Types by which a program marks what it copies as not to be recorded. Password managers and
/// browsers offer the first one, GTK programs the second, and programs that also run on Windows the
/// others.
constexpr auto marks = std::to_array<std::string_view>({
    "x-kde-passwordManagerHint",
    "text/x-kde-passwordManagerHint",
    R"(application/x-qt-windows-mime;value="Clipboard Viewer Ignore")",
    R"(application/x-qt-windows-mime;value="ExcludeClipboardContentFromMonitorProcessing")",
});

std::string fromLatin1(std::string_view bytes) {
    std::string decoded;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        if (code < 0x80) {
            decoded += byte;
            continue;
        }
        decoded += static_cast<char>(0xC0 | code >> 6);
        decoded += static_cast<char>(0x80 | (code & 0x3F));
    }
    return decoded;
}

} // namespace

const systemClipTypes::Names& systemClipTypes::names() {
    static constexpr Names names{file, text, richText, image};
    return names;
}

bool systemClipTypes::isMark(std::string_view type) {
    return std::ranges::find(marks, type) != marks.end();
}

std::string clipTypes::decodedText(const ClipData& data) {
    std::string_view bytes = data.bytes;
    // Some programs send the NUL at the end of a C string.
    while (bytes.ends_with('\0'))
        bytes.remove_suffix(1);
    return data.type == latin1 ? fromLatin1(bytes) : textFromBytes(bytes);
}

std::vector<ClipData> systemClipTypes::offeredText(std::string_view copied) {
    const bool isAscii = std::ranges::all_of(copied, [](char c) { return c > 0; });
    std::vector<ClipData> offer;
    for (const auto type : text)
        if (type != latin1 || isAscii)
            offer.push_back({std::string(type), std::string(copied)});
    return offer;
}

std::vector<ClipData> systemClipTypes::offeredFile(std::string_view url) {
    return {{std::string(file[0]), std::string(url) + "\r\n"},
            {std::string(file[1]), "copy\n" + std::string(url)}};
}

} // namespace tidemark
