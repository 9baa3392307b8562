#pragma once

#include <cstddef>
#include <string_view>

namespace tidemark {

/// The first `count` characters of a text, as people count them (grapheme clusters, UAX #29): a
/// letter and its accents, or a joined emoji, stay together.
std::string_view firstCharacters(std::string_view text, std::size_t count);

} // namespace tidemark
