#include "core/base/Base64.h"

#include <openssl/evp.h>

namespace tidemark {

namespace {

const unsigned char* bytePointer(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

} // namespace

std::string base64Encoded(std::string_view bytes) {
    // libcrypto writes a NUL after the text.
    std::string text((bytes.size() + 2) / 3 * 4 + 1, '\0');
    const int length = EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()),
                                       bytePointer(bytes), static_cast<int>(bytes.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::optional<std::string> base64Decoded(std::string_view text) {
    if (text.size() % 4 != 0)
        return std::nullopt;
    std::string bytes(text.size() / 4 * 3, '\0');
    const int length = EVP_DecodeBlock(reinterpret_cast<unsigned char*>(bytes.data()),
                                       bytePointer(text), static_cast<int>(text.size()));
    if (length < 0)
        return std::nullopt;
    // libcrypto counts the padding as bytes and accepts surrounding blanks. Encode the result again
    // to check that the text was canonical.
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    bytes.resize(static_cast<std::size_t>(length) - padding);
    return base64Encoded(bytes) == text ? std::optional(bytes) : std::nullopt;
}

} // namespace tidemark
