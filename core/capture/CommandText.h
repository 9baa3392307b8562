#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The command lines in definitions: words separated by blanks. A word in quotes may have blanks.
namespace tidemark::CommandText {

/// The rules for quotes and backslashes.
enum class Quoting {
    /// Either kind of quotes, and a backslash before any character (systemd.service(5)).
    unit,
    /// Double quotes only, and a backslash inside of them (desktop-entry-spec).
    desktopEntry,
    /// None: a word ends at a blank.
    none,
};

/// The first word, without its quotes; absent when there is none. An unclosed quote ends with the
/// text.
std::optional<std::string> firstWord(std::string_view command, Quoting quoting);

/// The text after the first word, without the blanks before it.
std::string_view afterFirstWord(std::string_view command, Quoting quoting);

/// The text with one space for each run of blanks outside of quotes, so that another indentation
/// is no change.
std::string withSingleBlanks(std::string_view text, Quoting quoting);

} // namespace tidemark::CommandText
