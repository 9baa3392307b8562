#include "core/base/Uuid.h"

#include "core/base/Hex.h"

#include <random>

namespace tidemark {

namespace {

/// Whether the canonical text has a hyphen at this index.
constexpr bool isHyphen(std::size_t place) {
    return place == 8 || place == 13 || place == 18 || place == 23;
}

std::optional<std::uint8_t> digitValue(char character) {
    if (character >= '0' && character <= '9')
        return static_cast<std::uint8_t>(character - '0');
    if (character >= 'A' && character <= 'F')
        return static_cast<std::uint8_t>(character - 'A' + 10);
    if (character >= 'a' && character <= 'f')
        return static_cast<std::uint8_t>(character - 'a' + 10);
    return std::nullopt;
}

} // namespace

Uuid Uuid::random() {
    static thread_local std::random_device device;
    Uuid result;
    for (std::size_t i = 0; i < result.bytes.size(); i += 4) {
        const std::uint32_t word = device();
        for (std::size_t k = 0; k < 4; ++k)
            result.bytes[i + k] = static_cast<std::uint8_t>(word >> (8 * k));
    }
    result.bytes[6] = static_cast<std::uint8_t>((result.bytes[6] & 0x0F) | 0x40);
    result.bytes[8] = static_cast<std::uint8_t>((result.bytes[8] & 0x3F) | 0x80);
    return result;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != 36)
        return std::nullopt;
    Uuid result;
    std::size_t nibble = 0;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (isHyphen(place)) {
            if (text[place] != '-')
                return std::nullopt;
            continue;
        }
        const auto value = digitValue(text[place]);
        if (!value)
            return std::nullopt;
        auto& byte = result.bytes[nibble / 2];
        byte = static_cast<std::uint8_t>(nibble % 2 == 0 ? *value << 4 : byte | *value);
        ++nibble;
    }
    return result;
}

std::string Uuid::text() const {
    std::string result;
    result.reserve(36);
    for (const std::uint8_t byte : bytes) {
        if (isHyphen(result.size()))
            result += '-';
        appendHex(result, byte, upperHexDigits);
    }
    return result;
}

} // namespace tidemark
