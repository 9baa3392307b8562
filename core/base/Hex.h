#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tidemark {

inline constexpr std::string_view lowerHexDigits = "0123456789abcdef";
inline constexpr std::string_view upperHexDigits = "0123456789ABCDEF";

/// Appends the two digits of a byte.
inline void appendHex(std::string& text, std::uint8_t byte,
                      std::string_view digits = lowerHexDigits) {
    text += digits[byte >> 4];
    text += digits[byte & 0x0F];
}

} // namespace tidemark
