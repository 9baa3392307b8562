#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tidemark {

/// Standard base64 with padding (RFC 4648, section 4), by libcrypto.
std::string base64Encoded(std::string_view bytes);
/// The decoded bytes; absent when `text` is not in that form.
std::optional<std::string> base64Decoded(std::string_view text);

} // namespace tidemark
