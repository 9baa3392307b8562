#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tidemark::utf8 {

/// The code point at `place`, which moves behind it; −1 for bytes that are part of none, of which
/// at least one is passed over. `place` must lie before the end.
std::int32_t next(std::string_view bytes, std::size_t& place);

/// The code point before `place`, which moves to its start; −1 as for `next`. `place` must lie
/// behind the start.
std::int32_t previous(std::string_view bytes, std::size_t& place);

} // namespace tidemark::utf8
