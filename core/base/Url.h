#pragma once

#include <optional>
#include <string_view>

namespace tidemark {

/// The scheme of a text that is an absolute URL by its characters (RFC 3986, section 2 and 3.1),
/// as it is written; absent for any other text. White space and letters beyond ASCII must be
/// escaped in a URL.
std::optional<std::string_view> urlScheme(std::string_view text);

} // namespace tidemark
