#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tidemark::utf8 {

/// Returns the code point at `place` and moves `place` past it. Returns −1 for invalid bytes and
/// moves past at least one of them. `place` must be before the end.
std::int32_t next(std::string_view bytes, std::size_t& place);

/// Returns the code point before `place` and moves `place` to its start; −1 as for `next`. `place`
/// must be after the start.
std::int32_t previous(std::string_view bytes, std::size_t& place);

} // namespace tidemark::utf8
