#pragma once

#include <optional>
#include <string_view>

namespace tidemark {

/// The scheme of an absolute URL, in the letter case of the text; absent when `text` has no scheme
/// or has characters that a URL must escape, such as white space or non-ASCII letters (RFC 3986,
/// sections 2 and 3.1).
std::optional<std::string_view> urlScheme(std::string_view text);

} // namespace tidemark
