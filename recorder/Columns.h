#pragma once

#include <cstddef>
#include <string_view>

namespace tidemark {

/// The width of a text in terminal columns, counting one for each code point.
std::size_t columns(std::string_view text);

} // namespace tidemark
