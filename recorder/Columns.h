#pragma once

#include <cstddef>
#include <string_view>

namespace tidemark {

/// How many columns of a terminal a text takes, one for each code point.
std::size_t columns(std::string_view text);

} // namespace tidemark
