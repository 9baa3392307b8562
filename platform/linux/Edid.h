#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tidemark {

/// What a display says of itself in its EDID (VESA E-EDID 1.4, its first block of 128 bytes). The
/// serial number is not read.
struct Edid {
    /// The registered letters of the maker, such as "DEL".
    std::string maker;
    /// The maker's number of the model.
    unsigned model = 0;
    /// The name of the model; empty where it has none.
    std::string name;

    /// Absent for bytes that are no EDID.
    static std::optional<Edid> parse(std::string_view bytes);

    bool operator==(const Edid&) const = default;
};

} // namespace tidemark
