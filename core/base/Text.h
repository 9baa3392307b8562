#pragma once

#include <concepts>
#include <cstdint>
#include <ranges>
#include <string>
#include <string_view>
#include <utility>

/// Small text functions for the whole program. All text is UTF-8.
namespace tidemark {

/// A byte count to be shown: decimal units, no fraction digits below a megabyte, one for megabytes,
/// two above, trailing zeros dropped; "Zero KB" for 0.
std::string byteString(std::int64_t bytes);

/// `byteString` of the absolute value after "+" (for 0 and above) or U+2212 MINUS SIGN.
std::string signedBytes(std::int64_t bytes);

/// The shortest decimal text that reads back as the same double, always with a fraction or an
/// exponent, such as "1700000000.0".
std::string shortestText(double value);

/// Without white space and line breaks (Unicode White_Space) at either end.
std::string_view trimmed(std::string_view text);

/// A to Z become a to z; all other bytes stay.
std::string asciiLowercased(std::string_view text);

bool isValidUtf8(std::string_view bytes);

/// Makes text for a record from a file name, which can be any bytes. Valid UTF-8 is kept; each
/// other byte becomes U+FFFD followed by its two hexadecimal digits, so that different names stay
/// different, unless a name itself contains such a sequence.
std::string textFromBytes(std::string_view bytes);

/// False for control characters, line separators, and the bidirectional embeddings, overrides and
/// isolates, with which one name can be made to look like another. The directional marks (such as
/// U+200E) are printable: they don't reorder other text.
bool isPrintable(std::int32_t character);

/// Text that is safe to show on a terminal or in a table. Characters that are not printable, except
/// the ASCII characters in `kept`, and bytes that are not UTF-8 each become U+FFFD. `kept` is "\n"
/// for text of several lines and "\t\r\n" for a table cell.
std::string printable(std::string_view text, std::string_view kept);

/// `printable` text on a single line.
std::string oneLine(std::string_view text);

/// Texts in a row, with `separator` between them.
template <std::ranges::input_range Texts>
    requires(!std::convertible_to<const Texts&, std::string_view>)
std::string joined(const Texts& texts, std::string_view separator) {
    std::string all;
    bool isFirst = true;
    for (const auto& text : texts) {
        if (!std::exchange(isFirst, false))
            all += separator;
        all += text;
    }
    return all;
}

/// `text`, ended with a full stop unless it has one.
std::string asSentence(std::string text);

/// The part of a path after its last "/", trailing slashes ignored; "/" for the root.
std::string_view lastPathComponent(std::string_view path);

/// The part of a path before its last "/", trailing slashes ignored; "/" for an entry of the root,
/// empty for a path without a folder.
std::string_view parentFolder(std::string_view path);

/// True when `path` lies below `root`: it starts with `root` and "/".
bool isBelow(std::string_view path, std::string_view root);

} // namespace tidemark
