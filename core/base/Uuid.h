#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tidemark {

/// A 128-bit identifier (RFC 9562). Its text is the canonical upper-case form with hyphens.
class Uuid {
public:
    /// The nil identifier, all zeros.
    Uuid() = default;

    /// A new random (version 4) identifier.
    static Uuid random();
    /// Parses the 8-4-4-4-12 form in either letter case; absent for anything else.
    static std::optional<Uuid> parse(std::string_view text);

    std::string text() const;

    auto operator<=>(const Uuid&) const = default;

private:
    std::array<std::uint8_t, 16> bytes{};
};

} // namespace tidemark
