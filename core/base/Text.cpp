#include "core/base/Text.h"

#include "core/base/Hex.h"
#include "core/base/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include <unicode/uchar.h>

namespace tidemark {

namespace {

struct Unit {
    double bytes;
    int fractionDigits;
    std::string_view symbol;
};

constexpr std::array units{
    Unit{1e3, 0, "KB"},  Unit{1e6, 1, "MB"},  Unit{1e9, 2, "GB"},
    Unit{1e12, 2, "TB"}, Unit{1e15, 2, "PB"}, Unit{1e18, 2, "EB"},
};

std::string fixedWithoutTrailingZeros(double value, int fractionDigits) {
    // Not printf, whose decimal point depends on the locale.
    std::array<char, 64> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, fractionDigits);
    std::string text(buffer.data(), result.ptr);
    if (fractionDigits > 0) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.')
            text.pop_back();
    }
    return text;
}

std::string magnitudeText(std::uint64_t bytes) {
    if (bytes == 0)
        return "Zero KB";
    if (bytes == 1)
        return "1 byte";
    if (bytes < 1000)
        return std::to_string(bytes) + " bytes";
    const auto value = static_cast<double>(bytes);
    // The first unit in which the rounded number stays below a thousand: 999,999 bytes are
    // "1 MB", not "1000 KB".
    for (const Unit& unit : units) {
        const double scale = std::pow(10.0, unit.fractionDigits);
        const double rounded = std::round(value / unit.bytes * scale) / scale;
        if (rounded < 1000 || &unit == &units.back())
            return fixedWithoutTrailingZeros(rounded, unit.fractionDigits) + ' '
                   + std::string(unit.symbol);
    }
    return {};
}

std::uint64_t magnitude(std::int64_t value) {
    return value < 0 ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
}

} // namespace

std::string byteString(std::int64_t bytes) {
    return (bytes < 0 ? "-" : "") + magnitudeText(magnitude(bytes));
}

std::string signedBytes(std::int64_t bytes) {
    return (bytes < 0 ? "\u2212" : "+") + magnitudeText(magnitude(bytes));
}

std::string shortestText(double value) {
    std::array<char, 64> buffer{};
    const double size = std::abs(value);
    const bool plain = size == 0 || (size >= 1e-4 && size < 0x1p54);
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                      plain ? std::chars_format::fixed : std::chars_format::scientific);
    std::string text(buffer.data(), result.ptr);
    if (plain && text.find('.') == std::string::npos)
        text += ".0";
    return text;
}

std::string_view trimmed(std::string_view text) {
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t place = start;
        const std::int32_t character = utf8::next(text, place);
        if (character < 0 || !u_isUWhiteSpace(character))
            break;
        start = place;
    }
    std::size_t end = text.size();
    while (end > start) {
        std::size_t place = end;
        const std::int32_t character = utf8::previous(text, place);
        if (character < 0 || !u_isUWhiteSpace(character))
            break;
        end = place;
    }
    return text.substr(start, end - start);
}

std::string asciiLowercased(std::string_view text) {
    std::string result(text);
    for (char& character : result)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    return result;
}

bool isValidUtf8(std::string_view bytes) {
    for (std::size_t place = 0; place < bytes.size();)
        if (utf8::next(bytes, place) < 0)
            return false;
    return true;
}

std::string textFromBytes(std::string_view bytes) {
    if (isValidUtf8(bytes))
        return std::string(bytes);
    std::string text;
    for (std::size_t place = 0; place < bytes.size();) {
        const std::size_t start = place;
        const bool valid = utf8::next(bytes, place) >= 0;
        const std::string_view piece = bytes.substr(start, place - start);
        if (valid) {
            text += piece;
            continue;
        }
        for (const char byte : piece) {
            text += "\uFFFD";
            appendHex(text, static_cast<std::uint8_t>(byte), upperHexDigits);
        }
    }
    return text;
}

bool isPrintable(std::int32_t character) {
    const bool isControl = character < 0x20 || (character >= 0x7F && character < 0xA0);
    const bool breaksLine = character >= 0x2028 && character <= 0x202E;
    const bool isolates = character >= 0x2066 && character <= 0x2069;
    return !isControl && !breaksLine && !isolates;
}

std::string printable(std::string_view text, std::string_view kept) {
    std::string shown;
    for (std::size_t place = 0; place < text.size();) {
        const std::size_t start = place;
        const std::int32_t character = utf8::next(text, place);
        if (isPrintable(character) || kept.contains(text[start]))
            shown += text.substr(start, place - start);
        else
            shown += "\uFFFD";
    }
    return shown;
}

std::string oneLine(std::string_view text) {
    return printable(text, "");
}

std::string asSentence(std::string text) {
    if (!text.ends_with('.'))
        text += '.';
    return text;
}

std::string_view lastPathComponent(std::string_view path) {
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    if (path.size() <= 1)
        return path;
    return path.substr(path.rfind('/') + 1);
}

std::string_view parentFolder(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/'))
        path.remove_suffix(1);
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos)
        return {};
    return path.substr(0, std::max<std::size_t>(slash, 1));
}

bool isBelow(std::string_view path, std::string_view root) {
    // The only root that ends with a slash.
    if (root == "/")
        return path.size() > 1 && path.front() == '/';
    return path.size() > root.size() && path[root.size()] == '/' && path.starts_with(root);
}

} // namespace tidemark
