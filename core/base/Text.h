#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Small text facts that the whole tree needs. All text is UTF-8.
namespace tidemark {

/// A byte count as people read it: decimal units, no fraction below a megabyte, one digit for
/// megabytes, two above, trailing zeros dropped; "Zero KB" for nothing.
std::string byteString(std::int64_t bytes);

/// `byteString` of the magnitude behind "+" (zero and above) or U+2212 MINUS SIGN.
std::string signedBytes(std::int64_t bytes);

/// The shortest decimal text that reads back as the same double, always with a fraction or an
/// exponent, such as "1700000000.0".
std::string shortestText(double value);

/// Without white space and line breaks (Unicode White_Space) at either end.
std::string_view trimmed(std::string_view text);

/// Letters A to Z as a to z; all other bytes as they are.
std::string asciiLowercased(std::string_view text);

bool isValidUtf8(std::string_view bytes);

/// The one border between names on disk, which are any bytes, and text in records: valid UTF-8
/// passes as it is; each byte that is part of none becomes U+FFFD and its two hexadecimal digits,
/// so that names that differ stay different.
std::string textFromBytes(std::string_view bytes);

/// False for a code point that does something instead of being seen: control characters, line
/// separators, and embeddings, overrides and isolates of the direction, with which one name passes
/// for another. The marks of direction are printable: they turn nothing but themselves.
bool isPrintable(std::int32_t character);

/// A text that can be shown: what is not printable, but for the ASCII characters in `kept`, and
/// bytes that are not UTF-8 each become U+FFFD. Names and texts of documents pass through here on
/// their way to a terminal or into a table; `kept` is "\n" for several lines, "\t\r\n" for the
/// cell of a table.
std::string printable(std::string_view text, std::string_view kept);

/// `printable` on a single line.
std::string oneLine(std::string_view text);

/// A text that ends with one full stop.
std::string asSentence(std::string text);

/// The part of a path behind its last "/", trailing slashes ignored; "/" for the root.
std::string_view lastPathComponent(std::string_view path);

/// The part of a path before its last "/", trailing slashes ignored; "/" for what lies in the
/// root, nothing for a path without a folder.
std::string_view parentFolder(std::string_view path);

/// True when `path` lies below `root`: it starts with `root` and "/".
bool isBelow(std::string_view path, std::string_view root);

} // namespace tidemark
