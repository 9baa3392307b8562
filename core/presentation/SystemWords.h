#pragma once

#include <span>
#include <string>
#include <string_view>

/// Translates texts for the present system. The texts in the code, in stored files and in exports
/// use the terms of macOS; a text is translated into the terms of the present system just before it
/// is shown.
namespace tidemark::systemWords {

/// One row of the table of a system. A "{}" in `source` matches any text, which replaces the "{}"
/// in `here`. A row without "{}" takes precedence over one with it; among several rows with "{}",
/// the first that matches is used.
struct Entry {
    std::string_view source;
    std::string_view here;
};

/// All texts that differ on this system. One source file per system.
std::span<const Entry> table();

/// The text for this system; a text that is not in the table is returned unchanged. Empty for
/// something that this system does not have, such as a setting, and that must not be shown.
std::string shown(std::string_view source);

} // namespace tidemark::systemWords
