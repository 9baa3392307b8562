#pragma once

#include <string>
#include <string_view>

/// Control sequences for terminals (ECMA-48, select graphic rendition).
namespace tidemark::textStyle {

inline constexpr std::string_view bold = "\033[1m";
inline constexpr std::string_view dim = "\033[2m";
inline constexpr std::string_view attention = "\033[1;33m";
inline constexpr std::string_view plain = "\033[0m";

} // namespace tidemark::textStyle

namespace tidemark {

inline std::string styled(std::string_view text, std::string_view style, bool withColour) {
    if (!withColour || text.empty())
        return std::string(text);
    return std::string(style).append(text).append(textStyle::plain);
}

} // namespace tidemark
