#pragma once

#include "core/base/Date.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// The list of recently used files that desktops share
/// (https://www.freedesktop.org/wiki/Specifications/desktop-bookmark-spec). Any program may write
/// to it, so nothing in it is trusted.
namespace tidemark::recentlyUsedList {

/// A longer list is not read.
inline constexpr std::size_t mostBytes = std::size_t{4} << 20;
/// Of more entries, those used last are returned.
inline constexpr std::size_t mostEntries = 2'000;

struct Entry {
    /// An absolute path without "." and ".."; any bytes.
    std::string path;
    Date used;

    bool operator==(const Entry&) const = default;
};

/// The list in the data folder of the user.
std::filesystem::path standardPath();

/// The entries, the most recently used first. Entries of other machines, and those that a program
/// keeps private, are left out. Where the text is malformed, the entries before that place are
/// returned.
std::vector<Entry> parse(std::string_view bytes);

/// The entries of a file; none when it can't be read.
std::vector<Entry> read(const std::filesystem::path& file);

} // namespace tidemark::recentlyUsedList
