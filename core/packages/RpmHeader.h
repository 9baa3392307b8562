#pragma once

#include "core/packages/PackageOwner.h"

#include <cstddef>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// The header of an installed package in the database of rpm(8): two counts, an index of entries
/// {tag, type, offset, count} and the data that the offsets refer to. All numbers are 32 bits, the
/// most significant byte first. Holds views into the bytes that were parsed, which must outlive
/// it.
class RpmHeader {
public:
    /// Absent when the two counts don't add up to the size of the bytes. An entry is checked when
    /// it is looked up, so damaged ones are never read beyond the end of the data.
    static std::optional<RpmHeader> parse(std::string_view bytes);

    /// Name and "[epoch:]version-release"; absent when one of them is missing.
    std::optional<PackageOwner> owner() const;
    /// The path of the file at a place in the package's list; absent when there is no such file.
    std::optional<std::string> file(std::size_t place) const;

private:
    struct Entry {
        std::uint32_t tag = 0;
        std::uint32_t type = 0;
        std::uint32_t offset = 0;
        std::uint32_t count = 0;
    };

    std::optional<Entry> find(std::uint32_t tag, std::uint32_t type) const;
    std::optional<std::uint32_t> number(std::uint32_t tag, std::size_t place) const;
    std::optional<std::string_view> text(std::uint32_t tag, std::uint32_t type,
                                         std::size_t place) const;

    std::string_view index;
    std::string_view data;
};

} // namespace tidemark
