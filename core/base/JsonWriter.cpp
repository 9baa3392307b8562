#include "core/base/JsonWriter.h"

#include "core/base/Error.h"
#include "core/base/Hex.h"
#include "core/base/Iso8601.h"
#include "core/base/Text.h"
#include "core/base/Utf8.h"

#include <array>
#include <charconv>
#include <cmath>

namespace tidemark::json {

namespace {

constexpr std::size_t flushSize = 1 << 16;

constexpr std::size_t blanksPerLevel = 2;

/// Bytes that need no escape in a JSON text: printable ASCII except quote and backslash.
constexpr auto plainBytes = [] {
    std::array<bool, 256> plain{};
    for (std::size_t byte = 0x20; byte < 0x7F; ++byte)
        plain[byte] = byte != '"' && byte != '\\';
    return plain;
}();

void appendEscaped(std::string& buffer, std::int32_t character) {
    switch (character) {
    case '"':
        buffer += "\\\"";
        break;
    case '\\':
        buffer += "\\\\";
        break;
    case '\n':
        buffer += "\\n";
        break;
    case '\r':
        buffer += "\\r";
        break;
    case '\t':
        buffer += "\\t";
        break;
    default:
        buffer += "\\u";
        for (const int shift : {12, 8, 4, 0})
            buffer += lowerHexDigits[static_cast<std::size_t>(character >> shift) & 0x0F];
    }
}

} // namespace

void JsonWriter::beginValue() {
    if (place == Place::value)
        buffer += ',';
    if (layout == Layout::indented && place != Place::key && depth > 0)
        beginLine();
}

void JsonWriter::endValue() {
    place = Place::value;
    if (buffer.size() >= flushSize) {
        output(buffer);
        buffer.clear();
    }
}

void JsonWriter::beginLine() {
    buffer += '\n';
    buffer.append(depth * blanksPerLevel, ' ');
}

void JsonWriter::open(char bracket) {
    beginValue();
    buffer += bracket;
    place = Place::start;
    ++depth;
}

void JsonWriter::close(char bracket) {
    --depth;
    if (layout == Layout::indented && place == Place::value)
        beginLine();
    buffer += bracket;
    endValue();
}

void JsonWriter::key(std::string_view name) {
    beginValue();
    quoted(name);
    buffer += layout == Layout::indented ? ": " : ":";
    place = Place::key;
}

void JsonWriter::text(std::string_view value) {
    beginValue();
    quoted(value);
    endValue();
}

void JsonWriter::quoted(std::string_view value) {
    buffer += '"';
    std::size_t written = 0;
    std::size_t next = 0;
    while (next < value.size()) {
        if (plainBytes[static_cast<unsigned char>(value[next])]) {
            ++next;
            continue;
        }
        const std::size_t start = next;
        const std::int32_t character = utf8::next(value, next);
        if (character >= 0x80 && isPrintable(character))
            continue;
        buffer.append(value, written, start - written);
        written = next;
        if (character < 0)
            buffer += "\uFFFD";
        else
            appendEscaped(buffer, character);
    }
    buffer.append(value, written, next - written);
    buffer += '"';
}

void JsonWriter::integer(std::int64_t value) {
    beginValue();
    std::array<char, 24> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    buffer.append(digits.data(), result.ptr);
    endValue();
}

void JsonWriter::real(double value) {
    if (!std::isfinite(value))
        throw Error("A number that is not finite can't be stored.");
    beginValue();
    std::array<char, 64> digits{};
    const double size = std::abs(value);
    const bool plain = size == 0 || (size >= 1e-5 && size < 1e17);
    const auto result =
        std::to_chars(digits.data(), digits.data() + digits.size(), value,
                      plain ? std::chars_format::fixed : std::chars_format::scientific);
    buffer.append(digits.data(), result.ptr);
    // "-0" could be read as an integer and lose its sign.
    if (value == 0 && std::signbit(value))
        buffer += ".0";
    endValue();
}

void JsonWriter::date(Date value) {
    if (dateForm == DateForm::seconds)
        return real(value.secondsSince2001);
    const auto inWords = iso8601Text(value);
    inWords ? text(*inWords) : null();
}

void JsonWriter::boolean(bool value) {
    beginValue();
    buffer += value ? "true" : "false";
    endValue();
}

void JsonWriter::null() {
    beginValue();
    buffer += "null";
    endValue();
}

void JsonWriter::finish() {
    output(buffer);
    buffer.clear();
}

} // namespace tidemark::json
