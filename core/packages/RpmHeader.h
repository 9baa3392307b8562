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
/// most significant byte first. Views into the header, which must outlive this.
class RpmHeader {
public:
    /// Absent when the bytes are not such a header. All counts and offsets are checked.
    static std::optional<RpmHeader> parse(std::string_view bytes);

    /// Name and "[epoch:]version-release"; absent when one of them is missing.
    std::optional<PackageOwner> owner() const;
    /// The path of a file by its number; absent when there is no such file.
    std::optional<std::string> file(std::size_t number) const;

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
