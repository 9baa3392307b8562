#include "core/base/Url.h"

#include <algorithm>

namespace tidemark {

namespace {

constexpr bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr bool isHexDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
constexpr bool isSchemeCharacter(char c) {
    return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.';
}

constexpr std::string_view marks = "-._~:/?#[]@!$&'()*+,;=";

bool isWellFormed(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '%') {
            if (i + 2 >= text.size() || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2]))
                return false;
            i += 2;
        } else if (!isLetter(c) && !isDigit(c) && !marks.contains(c)) {
            return false;
        }
    }
    return std::ranges::count(text, '#') <= 1;
}

} // namespace

std::optional<std::string_view> urlScheme(std::string_view text) {
    const auto scheme = text.substr(0, text.find(':'));
    if (scheme.size() == text.size() || scheme.empty() || !isLetter(scheme.front())
        || !std::ranges::all_of(scheme, isSchemeCharacter)
        || !isWellFormed(text.substr(scheme.size() + 1)))
        return std::nullopt;
    return scheme;
}

} // namespace tidemark
