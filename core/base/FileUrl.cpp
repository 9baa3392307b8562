#include "core/base/FileUrl.h"

#include "core/base/Text.h"

#include <array>
#include <charconv>

#include <unistd.h>

namespace tidemark::fileUrl {

namespace {

constexpr std::string_view scheme = "file:";

bool isThisMachine(std::string_view host) {
    if (host.empty() || asciiLowercased(host) == "localhost")
        return true;
    std::array<char, 256> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 && host == name.data();
}

/// Absent for an invalid escape, and for a NUL, which no path has.
std::optional<std::string> unescaped(std::string_view text) {
    std::string bytes;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (text[place] != '%') {
            bytes += text[place];
            continue;
        }
        const auto digits = text.substr(place + 1, 2);
        unsigned char byte = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (error != std::errc() || digits.size() != 2 || end != digits.data() + 2 || byte == 0)
            return std::nullopt;
        bytes += static_cast<char>(byte);
        place += 2;
    }
    return bytes;
}

bool staysAsItIs(char character) {
    constexpr std::string_view marks = "/-._~!$&'()*+,;=:@";
    const bool isLetter =
        (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    return isLetter || (character >= '0' && character <= '9') || marks.contains(character);
}

} // namespace

std::optional<std::string> path(std::string_view url) {
    if (asciiLowercased(url.substr(0, scheme.size())) != scheme)
        return std::nullopt;
    url.remove_prefix(scheme.size());
    if (url.starts_with("//")) {
        url.remove_prefix(2);
        const auto host = url.substr(0, url.find('/'));
        if (!isThisMachine(host))
            return std::nullopt;
        url.remove_prefix(host.size());
    }
    url = url.substr(0, url.find_first_of("?#"));
    return url.starts_with('/') ? unescaped(url) : std::nullopt;
}

std::string of(std::string_view path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string url = "file://";
    for (const char character : path) {
        if (staysAsItIs(character)) {
            url += character;
            continue;
        }
        url += '%';
        url += digits[static_cast<unsigned char>(character) >> 4];
        url += digits[static_cast<unsigned char>(character) & 0x0F];
    }
    return url;
}

} // namespace tidemark::fileUrl
