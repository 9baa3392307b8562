#include "core/base/Utf8.h"

#include <unicode/utf8.h>

// The macros of <unicode/utf8.h> narrow integers, and increment inside conditions, on purpose.
#pragma GCC diagnostic ignored "-Wconversion"

namespace tidemark::utf8 {

std::int32_t next(std::string_view bytes, std::size_t& place) {
    UChar32 character = 0;
    U8_NEXT(bytes.data(), place, bytes.size(), character); // NOLINT(bugprone-inc-dec-in-conditions)
    return character;
}

std::int32_t previous(std::string_view bytes, std::size_t& place) {
    UChar32 character = 0;
    auto offset = static_cast<std::int32_t>(place);
    U8_PREV(bytes.data(), 0, offset, character); // NOLINT(bugprone-inc-dec-in-conditions)
    place = static_cast<std::size_t>(offset);
    return character;
}

} // namespace tidemark::utf8
